#include "platform/controls/xDate.h"

#include "platform/NumberText.h"
#include "platform/controls/NumericInput.h"

const QDate xDate::EmptyDate(1899, 12, 30);

xDate::xDate(QWidget* parent) : xInput(parent) {
    setInputMask(QStringLiteral("9999/99/99;_"));
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setValidator(new HalfWidthDigits(this));
}

QDate xDate::date() const {
    const QDate typed =
        QDate::fromString(HalfWidthNumber(QLineEdit::text()), QStringLiteral("yyyy/MM/dd"));
    return typed.isValid() ? typed : EmptyDate;
}

void xDate::setDate(const QDate& date) {
    if (!date.isValid() || date == EmptyDate) {
        clear();
        return;
    }
    setText(date.toString(QStringLiteral("yyyy/MM/dd")));
}

bool xDate::isEmpty() const {
    return text().isEmpty();
}

bool xDate::isUnreadable() const {
    return !isEmpty() && date() == EmptyDate;
}

QString xDate::text() const {
    const QString typed = QLineEdit::text();
    return typed == QLatin1String("//") ? QString() : typed;
}
