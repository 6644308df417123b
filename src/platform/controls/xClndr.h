#pragma once

#include <QDate>
#include <QWidget>

class QCalendarWidget;
class QLabel;
class QToolButton;

// A month calendar: a month heading with the months named "１月" ... "１２月", buttons for the
// year and the month before and after, and the days of the month to pick from.
class xClndr : public QWidget {
    Q_OBJECT
public:
    explicit xClndr(QWidget* parent = nullptr);

    static QString monthName(int month);

    QDate Value() const;
    void setValue(const QDate& date);
    // The heading of the month shown, e.g. "2026年 １１月".
    QString heading() const;
    QCalendarWidget* days() const { return days_; }

signals:
    // The date picked or changed.
    void changed(const QDate& date);

private:
    void showPage(int year, int month);

    QCalendarWidget* days_;
    QLabel* heading_;
    QToolButton* previousYear_;
    QToolButton* previous_;
    QToolButton* next_;
    QToolButton* nextYear_;
};
