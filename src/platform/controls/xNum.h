#pragma once

#include "platform/controls/xInput.h"

class NumericInput;

// A number field, right-aligned: typed as a plain number, shown with its display format
// ("###,###,##0" by default) once it is left. An empty field has the value 0.
class xNum : public xInput {
    Q_OBJECT
public:
    explicit xNum(QWidget* parent = nullptr);

    double Value() const;
    void setValue(double value);
    bool isEmpty() const;
    void clearValue();

    void setDisplayFormat(const QString& format);
    const QString& displayFormat() const { return format_; }
    void setRange(double lowest, double highest);
    double lowest() const;
    double highest() const;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void applySettings(double lowest, double highest);
    QString plainText() const;

    QString format_ = QStringLiteral("###,###,##0");
    NumericInput* numeric_ = nullptr;
};
