#include "frame/BasCmnSubFun.h"

#include "frame/Globals.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/controls/CodeList.h"
#include "platform/controls/xInput.h"
#include "platform/controls/xPass.h"
#include "platform/report/ReportJob.h"

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

void CmnSetMstCombo(QComboBox* list,
                    const std::function<QList<std::pair<QString, QString>>()>& readEntries) {
    const bool filled = Procedure(
        Module, QStringLiteral("CmnSetMstCombo"), {}, [&] { RefillCodeList(list, readEntries()); },
        {.trace = false, .logErrors = false, .titlePrefix = VbErrorTitleWide});
    if (!filled)
        list->clear();
}

void CmnSetGlbData(ReportJob& job) {
    Procedure(Module, QStringLiteral("CmnSetGlbData"), {},
              [&] {
                  job.setLong(6, 1);
                  job.setLong(9, 1);
                  job.setString(3, QStringLiteral("*"));
              },
              {.trace = false});
}
