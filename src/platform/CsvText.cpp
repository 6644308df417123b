#include "platform/CsvText.h"

#include "platform/Failure.h"
#include "platform/WholeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

QString CsvField(const QString& value) {
    const bool quoted = value.contains(QLatin1Char(',')) || value.contains(QLatin1Char('"')) ||
                        value.contains(QLatin1Char('\r')) || value.contains(QLatin1Char('\n'));
    if (!quoted)
        return value;
    QString doubled = value;
    doubled.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + doubled + QLatin1Char('"');
}

QStringList CsvFields(const QString& line) {
    QStringList fields;
    QString field;
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (quoted) {
            if (c == QLatin1Char('"') && i + 1 < line.size() && line[i + 1] == QLatin1Char('"')) {
                field += c;
                ++i;
            } else if (c == QLatin1Char('"')) {
                quoted = false;
            } else {
                field += c;
            }
        } else if (c == QLatin1Char('"')) {
            quoted = true;
        } else if (c == QLatin1Char(',')) {
            fields << field;
            field.clear();
        } else {
            field += c;
        }
    }
    fields << field;
    return fields;
}

QString CsvRecord(const QStringList& fields) {
    QStringList written;
    written.reserve(fields.size());
    for (const QString& field : fields)
        written << CsvField(field);
    return written.join(QLatin1Char(',')) + QStringLiteral("\r\n");
}

CsvFile::CsvFile(const QString& path)
    : path_(QFileInfo(path).absoluteFilePath()), file_(std::make_unique<QSaveFile>(path_)) {
    // The customers' names, addresses and telephones: for the file's owner only.
    if (!QDir().mkpath(QFileInfo(path_).absolutePath()) || !file_->open(QIODevice::WriteOnly) ||
        !file_->setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) ||
        file_->write(Utf8Bom) != Utf8Bom.size())
        fail();
}

CsvFile::~CsvFile() = default;

void CsvFile::write(const QStringList& fields) {
    const QByteArray record = CsvRecord(fields).toUtf8();
    if (file_->write(record) != record.size())
        fail();
}

void CsvFile::flush() {
    FlushWholeFile(*file_);
}

void CsvFile::commit() {
    CommitWholeFile(*file_);
}

void CsvFile::fail() const {
    const QString reason = file_->errorString();
    throw Failure(ErrorNumber::FileAccess,
                  QStringLiteral("ファイルを書けません: ") + QDir::toNativeSeparators(path_) +
                      (reason.isEmpty() ? QString() : QStringLiteral(" (") + reason + u')'));
}
