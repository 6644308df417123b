#include "frame/CsvExport.h"

#include "frame/Procedure.h"
#include "platform/AppFolder.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/SaveFileDialog.h"

#include <QDir>
#include <QFileInfo>

namespace {
const QString ExportFolder = QStringLiteral("Export");
} // namespace

void ExportCsv(const QString& screen, const QString& title, const QString& suggestedName,
               const std::function<bool(const QString& path)>& write) {
    Procedure(screen, QStringLiteral("OutputCsv"), QStringLiteral("CSV出力処理"),
              [&] {
                  QDir().mkpath(AppPath(ExportFolder));
                  QString path =
                      AskSaveFileName(QStringLiteral("CSV出力"),
                                      AppPath(ExportFolder + QLatin1Char('/') + suggestedName),
                                      QStringLiteral("CSVファイル (*.csv)"));
                  if (path.isEmpty())
                      return;
                  if (QFileInfo(path).suffix().isEmpty())
                      path += QStringLiteral(".csv");
                  if (write(path))
                      MsgBox(QStringLiteral("ＣＳＶファイルに出力しました。") + QChar(13) +
                                 QDir::toNativeSeparators(path),
                             MsgIcon::Information, MsgButtons::OK, title);
              },
              {.ownMessage = [&](const Failure& failure) {
                  if (failure.number() != ErrorNumber::FileAccess)
                      return false;
                  MsgBox(QStringLiteral("ＣＳＶファイルを書き出せませんでした。") + QChar(13) +
                             failure.description(),
                         MsgIcon::Exclamation, MsgButtons::OK, title);
                  return true;
              }});
}
