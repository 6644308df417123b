#include "frame/DateFields.h"

#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/controls/xDate.h"

#include <QApplication>
#include <QPushButton>

bool CmnRefuseUnreadableDate(xDate* field) {
    if (!field->isUnreadable())
        return false;
    CmnDspMsg(OpeErr_003);
    field->setFocus();
    field->selectAll();
    return true;
}

void CmnRefuseUnreadableDateOnLeave(xDate* field) {
    QObject::connect(field, &xInput::leave, field, [field] {
        // The box itself takes the focus from whatever had it: that is not checked again. A key
        // or button takes the focus before it acts; what reads the date says so itself, once.
        static bool refusing = false;
        const QWidget* next = QApplication::focusWidget();
        if (refusing || !next || next->window() != field->window() ||
            qobject_cast<const QPushButton*>(next))
            return;
        refusing = true;
        CmnRefuseUnreadableDate(field);
        refusing = false;
    });
}
