#pragma once

#include <QColor>
#include <QLineEdit>

class CharacterLimit;
class QValidator;

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

    // The longest text in characters. What goes past it, typed, pasted, put in by an input
    // method or set by the program, is cut off a whole character at a time.
    void setMaxLength(int characters);
    int maxLength() const;

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
