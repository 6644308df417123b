#pragma once

#include <QDialog>
#include <QList>
#include <QStringList>
#include <functional>

// The screens a test expects to be opened, in order, each with the code that drives it as a
// person would. The screen is shown (not modally) while it is driven; if the driver leaves it
// open it is closed with Rejected. A screen nobody expected is recorded and closed at once.
class ModalScript {
public:
    template <class ScreenType> void expect(std::function<void(ScreenType&)> drive) {
        expected_.append({QString::fromLatin1(ScreenType::staticMetaObject.className()),
                          [drive](QDialog& screen) {
                              drive(static_cast<ScreenType&>(screen));
                          }});
    }

    int run(QDialog& screen);

    QStringList failures() const;
    void reset() { *this = {}; }

private:
    struct Expected {
        QString className;
        std::function<void(QDialog&)> drive;
    };
    QList<Expected> expected_;
    QStringList failures_;
};
