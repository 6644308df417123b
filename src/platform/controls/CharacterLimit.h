#pragma once

#include <QPointer>
#include <QValidator>

// Text limits counted in characters (Unicode code points): a character outside the basic plane
// (𠮷, an emoji) is two UTF-16 units and is kept or dropped whole, never cut in half.

// The characters in the text; a lone half of a pair counts as one.
int CharacterCount(const QString& text);

// Makes the text hold whole characters within the limit: lone halves of pairs go, then, while
// the text is too long, the characters just before the cursor (what was typed, pasted or put
// in last) and, when those are not enough, the last ones. The cursor stays after what is kept.
void FitToCharacters(QString& text, int& cursor, int limit);

// The input rule of a field with a limit: the text is fitted to the limit first, then the
// field's own rule (a number's shape, ...) decides, when it has one. A text longer than the
// limit that the field held before an edit (a stored value put in whole) may stay that long:
// the limit then is the length it had.
class CharacterLimit : public QValidator {
public:
    explicit CharacterLimit(QObject* parent) : QValidator(parent) {}

    void setLimit(int characters) { limit_ = characters; }
    int limit() const { return limit_; }
    void setRule(QValidator* rule) { rule_ = rule; }
    // The program puts this text in: it is kept whole.
    void keepWhole(const QString& text) { held_ = CharacterCount(text); }

    State validate(QString& input, int& position) const override;
    void fixup(QString& input) const override;

private:
    int limit_ = 32767;
    mutable int held_ = 0; // the characters the field held after the last change
    QPointer<QValidator> rule_;
};
