#pragma once

#include "platform/ui/MsgBox.h"

#include <QList>
#include <QStringList>

// The boxes a test expects, in order, each with the button to press. A box nobody expected
// is recorded as a failure and answered OK (or No for a question), so no test ever hangs.
class MsgScript {
public:
    // The answer of one who presses Enter: the box's default button.
    static constexpr int Enter = -1;

    // A catalogue message ("OpeErr_005..."), matched by its text and title.
    void expect(const QString& msgCode, int answer = Answer::OK);
    // Any other box, matched by text and title.
    void expectBox(const QString& text, const QString& title, int answer = Answer::OK);
    // One of two catalogue messages, whichever comes: the shown() list tells which.
    void expectEither(const QString& msgCode, const QString& otherCode, int answer = Answer::OK);
    // The standard failure box: its fixed first line, the description and the error number.
    void expectFailure(const QString& description, long number);
    // A box whose text starts so: for failures whose description the database words.
    void expectBoxStartingWith(const QString& text, const QString& title, int answer = Answer::OK);

    int answer(const MsgRequest& request);

    QStringList failures() const;
    const QList<MsgRequest>& shown() const { return shown_; }
    void reset() { *this = {}; }

private:
    // The boxes (text and title) any one of which may come next.
    struct Expected {
        QList<std::pair<QString, QString>> boxes;
        int answer;
        bool prefix = false;
    };
    QList<Expected> expected_;
    QList<MsgRequest> shown_;
    QStringList failures_;
};

// The title CmnDspMsg gives a catalogue message, written out independently of the program.
QString ExpectedTitle(const QString& msgCode);
