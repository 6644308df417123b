#include "platform/ui/SaveFileDialog.h"

#include "platform/ui/MsgBox.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>

namespace {

SaveFileHandler& handler() {
    static SaveFileHandler instance;
    return instance;
}

// The dialog in Japanese whether or not Qt's own translations are installed; replacing a file
// is asked through the program's own box.
QString showRealDialog(const SaveFileRequest& request) {
    QFileDialog dialog(QApplication::activeWindow(), request.title, request.suggested,
                       request.filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QFileInfo(request.suggested).suffix());
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("保存する場所:"));
    dialog.setLabelText(QFileDialog::FileName, QStringLiteral("ファイル名:"));
    dialog.setLabelText(QFileDialog::FileType, QStringLiteral("ファイルの種類:"));
    dialog.setLabelText(QFileDialog::Accept, QStringLiteral("保存"));
    dialog.setLabelText(QFileDialog::Reject, QStringLiteral("キャンセル"));
    while (dialog.exec() == QDialog::Accepted) {
        const QString path = dialog.selectedFiles().value(0);
        if (!QFileInfo::exists(path) ||
            MsgBox(QStringLiteral("同じ名前のファイルがあります。置き換えてよろしいですか？") +
                       QChar(13) + path,
                   MsgIcon::Question, MsgButtons::YesNo, request.title,
                   MsgDefault::Second) == Answer::Yes)
            return path;
    }
    return {};
}

} // namespace

QString AskSaveFileName(const QString& title, const QString& suggested, const QString& filter) {
    const SaveFileRequest request{title, suggested, filter};
    if (handler())
        return handler()(request);
    return showRealDialog(request);
}

void SetSaveFileHandler(SaveFileHandler newHandler) {
    handler() = std::move(newHandler);
}
