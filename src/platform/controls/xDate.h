#pragma once

#include "platform/controls/xInput.h"

#include <QDate>

// A date field shown "yyyy/mm/dd". An empty field holds the empty date 1899/12/30.
class xDate : public xInput {
    Q_OBJECT
public:
    static const QDate EmptyDate;

    explicit xDate(QWidget* parent = nullptr);

    // The date typed, or EmptyDate when the field is empty or not a whole valid date.
    QDate date() const;
    // EmptyDate or an invalid date empties the field.
    void setDate(const QDate& date);
    bool isEmpty() const;
    // The field holds something that is not a real date: a day the month does not have, a
    // thirteenth month, a date typed in part.
    bool isUnreadable() const;
    // The text as shown: "yyyy/mm/dd", or empty text when nothing is typed.
    QString text() const;
};
