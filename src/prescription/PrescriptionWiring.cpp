#include "prescription/PrescriptionWiring.h"

#include "domain/Prescription.h"
#include "platform/controls/xField.h"
#include "prescription/LeaveRules.h"
#include "prescription/PrescriptionReference.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>

namespace {

enum Value { Sph, Cyl, Ax, S, P1, B1, P2, B2, Gai, Tama, Pd, Ragan, Kyosei };

struct InputSettings {
    const char* pattern;
    double lowest;
    double highest;
};

InputSettings settingsOf(int index, int eye, bool onRegister) {
    const bool left = eye == 1;
    switch (index) {
    case Sph:
    case S:
        return {"+00.00", -99.99, onRegister ? 999.99 : 99.99};
    case Cyl:
        return {"+0.00", -9.99, 9.99};
    case Ax:
        return {"000", 0, 999};
    case P1:
        return {onRegister && left ? "0.00" : "0.0", 0, 9.99};
    case Gai:
    case Tama:
        return {"00", 0, 99};
    case Pd:
        return {"00.0", onRegister && left ? -99.9 : 0, 99.9};
    default: // P2, Ragan, Kyosei
        return {"0.00", -9.99, 9.99};
    }
}

// The field an empty Cyl, P1 or P2 skips to: over the value that depends on it.
int skipTarget(int index) {
    switch (index) {
    case Cyl:
        return S;
    case P1:
        return P2;
    case P2:
        return Gai;
    default:
        return -1;
    }
}

} // namespace

const std::array<int, 13> PrescriptionWiring::ScreenOrder{Sph, Cyl, Ax,   S,     P1,     B1, P2,
                                                          B2,  Gai, Tama, Ragan, Kyosei, Pd};

PrescriptionWiring::PrescriptionWiring(PrescriptionScreen screen, const EyeFields& right,
                                       const EyeFields& left, QObject* parent)
    : QObject(parent), screen_(screen), eyes_{right, left} {
    const bool hundredths = screen == PrescriptionScreen::Register;
    for (int eye = 0; eye < 2; ++eye)
        for (int index = 0; index < 13; ++index) {
            xField* input = field(eye, index);
            applyInputSettings(eye, index);
            connect(input, &xInput::leave, this, [input, index, hundredths] {
                input->setText(ApplyLeaveRule(index, input->text(), hundredths));
            });
            connect(input, &xInput::keyDown, this,
                    [this, eye, index](int key, Qt::KeyboardModifiers modifiers, bool* handled) {
                        if (modifiers == Qt::NoModifier || modifiers == Qt::KeypadModifier)
                            *handled = keyRule(eye, index, key);
                    });
        }
}

void PrescriptionWiring::applyInputSettings(int eye, int index) {
    if (PrescriptionColumns[index].kind == PrescriptionKind::Text)
        return;
    const InputSettings settings = settingsOf(index, eye, screen_ == PrescriptionScreen::Register);
    field(eye, index)
        ->setNumericInput(QString::fromLatin1(settings.pattern), settings.lowest, settings.highest);
    field(eye, index)->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

bool PrescriptionWiring::keyRule(int eye, int index, int key) {
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab;
    const int target = skipTarget(index);
    if (enter && target >= 0 && field(eye, index)->text().trimmed().isEmpty()) {
        QApplication::processEvents();
        field(eye, target)->setFocus();
        return true;
    }
    if (screen_ != PrescriptionScreen::Register || (key != Qt::Key_Right && key != Qt::Key_Left))
        return false;
    // The two rows make one ring: past the right eye's last value comes the left eye's first.
    const int position =
        int(std::find(ScreenOrder.begin(), ScreenOrder.end(), index) - ScreenOrder.begin());
    const int step = key == Qt::Key_Right ? 1 : -1;
    int nextPosition = position + step;
    int nextEye = eye;
    if (nextPosition > 12 || nextPosition < 0) {
        nextPosition = nextPosition > 12 ? 0 : 12;
        nextEye = 1 - eye;
    }
    field(nextEye, ScreenOrder[nextPosition])->setFocus();
    return true;
}

QGridLayout* PrescriptionGrid(QWidget* parent, const EyeFields& right, const EyeFields& left,
                              const QString (&pdCaptions)[2],
                              const PrescriptionReference* reference) {
    const QString captions[] = {
        QStringLiteral("S度数"),   QStringLiteral("C度数"),   QStringLiteral("軸度"),
        QStringLiteral("加入度"),  QStringLiteral("ﾌﾟﾘｽﾞﾑ1"), QStringLiteral("ﾍﾞｰｽ1"),
        QStringLiteral("ﾌﾟﾘｽﾞﾑ2"), QStringLiteral("ﾍﾞｰｽ2"),   QStringLiteral("外径"),
        QStringLiteral("小玉"),    QStringLiteral("裸眼"),    QStringLiteral("矯正")};
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    for (int column = 0; column < 12; ++column) {
        auto* label = new QLabel(captions[column], parent);
        label->setAlignment(Qt::AlignCenter);
        grid->addWidget(label, 0, column + 1);
    }
    const QString eyeNames[] = {QStringLiteral("<Ｒ>"), QStringLiteral("<Ｌ>")};
    const EyeFields* eyes[] = {&right, &left};
    const int rowsPerEye = reference ? 2 : 1;
    for (int eye = 0; eye < 2; ++eye) {
        const int row = 1 + eye * rowsPerEye;
        grid->addWidget(new QLabel(eyeNames[eye], parent), row, 0);
        for (int column = 0; column < 12; ++column)
            grid->addWidget((*eyes[eye])[PrescriptionWiring::ScreenOrder[column]], row, column + 1);
        auto* pd = new QLabel(pdCaptions[eye], parent);
        pd->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(pd, row, 13);
        grid->addWidget((*eyes[eye])[PrescriptionWiring::ScreenOrder[12]], row, 14);
        if (!reference)
            continue;
        grid->addWidget(reference->caption(eye), row + 1, 0);
        for (int column = 0; column < 13; ++column)
            grid->addWidget(reference->value(eye, PrescriptionWiring::ScreenOrder[column]), row + 1,
                            column < 12 ? column + 1 : 14);
    }
    return grid;
}

QList<QWidget*> PrescriptionTabOrder(const EyeFields& right, const EyeFields& left) {
    QList<QWidget*> order;
    for (const EyeFields* eye : {&right, &left})
        for (int index : PrescriptionWiring::ScreenOrder)
            order << (*eye)[index];
    return order;
}
