#include "prescription/PrescriptionReference.h"

#include "domain/Purchase.h"
#include "platform/controls/xField.h"
#include "prescription/LeaveRules.h"

#include <QLabel>

namespace {

enum { Sph, Cyl, S = 3 };
constexpr int Powers[] = {Sph, Cyl, S};

// What a field's text stands for: the value its leave rule makes of it, so that a value half
// typed (or typed in hundredths) is judged as it will be kept.
double typedValue(int index, const QString& text, bool hundredthsEntry) {
    const QString kept = ApplyLeaveRule(index, text, hundredthsEntry);
    return IsPrescriptionNumber(kept) ? ReadNumber(kept) : 0;
}

} // namespace

const QColor PrescriptionReference::MarkColor(255, 190, 110);

PrescriptionReference::PrescriptionReference(QWidget* parent, const EyeFields& right,
                                             const EyeFields& left, bool hundredthsEntry)
    : QObject(parent), fields_{right, left}, hundredthsEntry_(hundredthsEntry) {
    // A reference reads smaller than what is typed, and its rows stay low so that the screens
    // keep their size.
    QFont small = parent->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    const auto label = [parent, &small](const QString& name) {
        auto* made = new QLabel(parent);
        made->setObjectName(name);
        made->setFont(small);
        made->setFixedHeight(QFontMetrics(small).height());
        return made;
    };
    const QString eyeNames[] = {QStringLiteral("R"), QStringLiteral("L")};
    for (int eye = 0; eye < 2; ++eye) {
        captions_[eye] = label(QStringLiteral("lblZenkai") + eyeNames[eye]);
        // As wide as its longest text from the start: nothing beside it moves when it changes.
        captions_[eye]->setMinimumWidth(
            QFontMetrics(small).horizontalAdvance(QStringLiteral("前回 0000/00/00")) + 2);
        for (int i = 0; i < 13; ++i) {
            QLabel* value = label(QStringLiteral("lblZenkai") +
                                  QString::fromLatin1(PrescriptionColumns[i].suffix) +
                                  QLatin1Char('_') + eyeNames[eye]);
            value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            value->setContentsMargins(0, 0, 4, 0);
            values_[eye][i] = value;
        }
        for (int i : Powers)
            connect(fields_[eye][i], &QLineEdit::textChanged, this,
                    [this, eye, i] { mark(eye, i); });
    }
    show(nullptr);
}

void PrescriptionReference::show(const Purchase* previous) {
    for (int eye = 0; eye < 2; ++eye) {
        previous_[eye] = previous ? previous->eyes[eye] : Prescription();
        captions_[eye]->setText(previous ? QStringLiteral("前回 ") + PurchaseDateText(*previous)
                                         : QStringLiteral("前回なし"));
        for (int i = 0; i < 13; ++i)
            values_[eye][i]->setText(PrescriptionText(previous_[eye], i));
        for (int i : Powers)
            mark(eye, i);
    }
}

void PrescriptionReference::clear() {
    show(nullptr);
    for (QLabel* caption : captions_)
        caption->clear();
}

void PrescriptionReference::mark(int eye, int index) {
    Prescription now;
    now.numbers[index] = typedValue(index, fields_[eye][index]->text(), hundredthsEntry_);
    const PowerMove move = PowerChange(now, previous_[eye], index);
    const bool moved = move != PowerMove::None;
    QLabel* label = values_[eye][index];
    const QString sign = move == PowerMove::Up ? QStringLiteral("▲") : QStringLiteral("▼");
    label->setText((moved ? sign : QString()) + PrescriptionText(previous_[eye], index));
    QPalette colors = label->palette();
    colors.setColor(QPalette::Window, MarkColor);
    label->setPalette(colors);
    label->setAutoFillBackground(moved);
    fields_[eye][index]->setInputAreaColor(moved ? MarkColor : QColor(Qt::white));
}
