#pragma once

#include <QList>
#include <QObject>
#include <array>

class PrescriptionReference;
class QGridLayout;
class QWidget;
class xField;

// The screens that take a prescription. The register has a hundredths entry for Sph and S,
// arrow keys that run round both eyes, wider input for Sph and S, and two odd left-eye fields.
enum class PrescriptionScreen { Register, History };

// The thirteen fields of one eye, in table order (see PrescriptionColumns).
using EyeFields = std::array<xField*, 13>;

// Gives a prescription's fields (right and left eye) their input settings, leave rules and key
// rules.
class PrescriptionWiring : public QObject {
    Q_OBJECT
public:
    PrescriptionWiring(PrescriptionScreen screen, const EyeFields& right, const EyeFields& left,
                       QObject* parent);

    // Table indexes of the values in screen order: Ragan and Kyosei come before Pd.
    static const std::array<int, 13> ScreenOrder;

private:
    void applyInputSettings(int eye, int index);
    bool keyRule(int eye, int index, int key);
    xField* field(int eye, int index) const { return eyes_[eye][index]; }

    PrescriptionScreen screen_;
    std::array<EyeFields, 2> eyes_;
};

// The prescription's fields on a screen: the captions above, a row per eye marked <Ｒ> and <Ｌ>,
// the values in screen order with the Pd field last behind its caption (pdCaptions: right, left).
// A reference's row of previous values stands under each eye's row, value under value.
QGridLayout* PrescriptionGrid(QWidget* parent, const EyeFields& right, const EyeFields& left,
                              const QString (&pdCaptions)[2],
                              const PrescriptionReference* reference = nullptr);

// The prescription's fields in the order Tab runs through them: the right eye's row as shown,
// then the left eye's.
QList<QWidget*> PrescriptionTabOrder(const EyeFields& right, const EyeFields& left);
