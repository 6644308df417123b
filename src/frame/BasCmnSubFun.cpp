#include "frame/BasCmnSubFun.h"

#include "frame/Globals.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/controls/xInput.h"
#include "platform/controls/xPass.h"
#include "platform/report/Report.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>

namespace {

const QString Module = QStringLiteral("BasCmnSubFun");

void setBaseColor(QWidget* control, const QColor& color) {
    QPalette colors = control->palette();
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        colors.setColor(group, QPalette::Base, color);
    control->setPalette(colors);
}

} // namespace

QVariant CmnNvl(const QVariant& value, const QVariant& defaultValue) {
    if (value.isNull() || (value.typeId() == QMetaType::QString && value.toString().isEmpty()))
        return defaultValue;
    return value;
}

QString CmnFmtNum(double value, const QString& kind) {
    if (value == 0)
        return {};
    if (kind == QLatin1String("+"))
        return FormatNumber(value, QStringLiteral("+0.00"));
    if (kind == QLatin1String("1"))
        return FormatNumber(value, QStringLiteral("0.0"));
    return FormatNumber(value, QStringLiteral("0.00"));
}

void CmnCtlEnabled(QWidget* control, bool enabled) {
    Procedure(Module, QStringLiteral("CmnCtlEnabled"), {},
              [&] {
                  const QColor color = enabled ? EnabledAreaColor : DisabledAreaColor;
                  if (qobject_cast<xPass*>(control))
                      return;
                  if (auto* input = qobject_cast<xInput*>(control)) {
                      input->setEnabled(enabled);
                      input->setInputAreaColor(color);
                  } else if (qobject_cast<QLineEdit*>(control) ||
                             qobject_cast<QComboBox*>(control)) {
                      control->setEnabled(enabled);
                      setBaseColor(control, color);
                      KeepTextReadableWhenDisabled(control);
                  } else if (qobject_cast<QAbstractButton*>(control) ||
                             qobject_cast<QGroupBox*>(control)) {
                      control->setEnabled(enabled);
                  }
              },
              {.trace = false});
}

void CmnSetGlbData(long job) {
    Procedure(Module, QStringLiteral("CmnSetGlbData"), {},
              [&] {
                  jvSetLong(job, 6, 1);
                  jvSetLong(job, 9, 1);
                  jvSetString(job, 3, QStringLiteral("*"));
              },
              {.trace = false});
}
