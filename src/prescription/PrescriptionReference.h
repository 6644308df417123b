#pragma once

#include "domain/Prescription.h"
#include "prescription/PrescriptionWiring.h"

#include <QObject>
#include <array>

class QLabel;
class QWidget;
struct Purchase;

// The previous prescription beside a screen's own: per eye a read-only row of the same values
// under the eye's fields, captioned with the previous purchase's date. Each power (Sph, Cyl, S)
// typed now that moved by 0.50 or more since then is marked in colour and by a sign (▲ up,
// ▼ down), on its field and beside the previous value, as the field changes. The rows take no
// focus and nothing of them is ever saved.
class PrescriptionReference : public QObject {
    Q_OBJECT
public:
    PrescriptionReference(QWidget* parent, const EyeFields& right, const EyeFields& left,
                          bool hundredthsEntry);

    // Shows a purchase's prescription as the previous one; null shows that there is none.
    void show(const Purchase* previous);
    // Nothing to compare with and nothing said: the rows of a screen that shows no purchase.
    void clear();

    // The row's caption ("前回" and the date) and its value labels, by eye and table index.
    QLabel* caption(int eye) const { return captions_[eye]; }
    QLabel* value(int eye, int index) const { return values_[eye][index]; }

    static const QColor MarkColor;

private:
    void mark(int eye, int index);

    std::array<EyeFields, 2> fields_;
    std::array<std::array<QLabel*, 13>, 2> values_{};
    std::array<QLabel*, 2> captions_{};
    std::array<Prescription, 2> previous_;
    bool hundredthsEntry_;
};
