#pragma once

#include <QColor>
#include <QLineEdit>

class CharacterLimit;
class QValidator;

// The text colour of a disabled field, list or label: dark enough to read on the grey area of a
// disabled field (#C0C0C0), where the style's own light grey was not.
inline const QColor DisabledTextColor(0x40, 0x40, 0x40);
void KeepTextReadableWhenDisabled(QWidget* control);

// The common ground of the input controls: a one-line field with an input-area colour and
// two notifications, leave (the field lost the focus) and key-down (before the field handles
// the key; a receiver that sets *handled to true keeps the key from the field). Its length
// limit counts characters, not UTF-16 units.
class xInput : public QLineEdit {
    Q_OBJECT
public:
    explicit xInput(QWidget* parent = nullptr);

    QColor InputAreaColor() const;
    void setInputAreaColor(const QColor& color);

    // The longest text in characters that is typed, pasted or put in by an input method; what
    // goes past it is cut off a whole character at a time. A longer text the program puts in
    // (a stored value) is shown and kept whole: an edit may shorten it, never lengthen it past
    // the longer of the limit and what it held before the edit.
    void setMaxLength(int characters);
    int maxLength() const;
    void setText(const QString& text);
    void clear();

signals:
    void leave();
    void keyDown(int key, Qt::KeyboardModifiers modifiers, bool* handled);

protected:
    // The field's own rule for its text (a number's shape, ...), checked after the limit.
    void setInputRule(QValidator* rule);

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    CharacterLimit* limit();

    CharacterLimit* limit_ = nullptr;
};
