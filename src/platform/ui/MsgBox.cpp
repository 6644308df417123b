#include "platform/ui/MsgBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace {

MsgBoxHandler& handler() {
    static MsgBoxHandler instance;
    return instance;
}

QMessageBox::Icon toQtIcon(MsgIcon icon) {
    switch (icon) {
    case MsgIcon::Critical:
        return QMessageBox::Critical;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

int showRealBox(const MsgRequest& request) {
    QString text = request.text;
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QMessageBox box(toQtIcon(request.icon), request.title, text, QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    if (request.buttons == MsgButtons::YesNo) {
        QPushButton* yes = box.addButton(QStringLiteral("はい(&Y)"), QMessageBox::YesRole);
        QPushButton* no = box.addButton(QStringLiteral("いいえ(&N)"), QMessageBox::NoRole);
        box.setDefaultButton(request.defaultButton == MsgDefault::Second ? no : yes);
        box.exec();
        return box.clickedButton() == yes ? Answer::Yes : Answer::No;
    }
    box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box.exec();
    return Answer::OK;
}

} // namespace

int MsgBox(const QString& text, MsgIcon icon, MsgButtons buttons, const QString& title,
           MsgDefault defaultButton) {
    const MsgRequest request{text, icon, buttons, title, defaultButton};
    if (handler())
        return handler()(request);
    return showRealBox(request);
}

void SetMsgBoxHandler(MsgBoxHandler newHandler) {
    handler() = std::move(newHandler);
}
