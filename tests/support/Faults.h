#pragma once

#include "support/Harness.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <memory>

// Faults a shop meets, made for a test.

// A file system of its own, already full: a small tmpfs mounted on the folder (made when
// missing), unmounted when the object goes. Mounting takes root; whyNot() says why there is
// none.
class FullDisk {
public:
    explicit FullDisk(const QString& folder);
    ~FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    QString whyNot() const { return whyNot_; }
    QString path(const QString& relative) const { return folder_ + u'/' + relative; }

private:
    QString folder_;
    QString whyNot_;
};

// In a test: a full disk on the folder, or the test skipped saying why.
#define FULL_DISK(name, folder)                                                                    \
    FullDisk name(folder);                                                                         \
    if (!name.whyNot().isEmpty())                                                                  \
    QSKIP(qPrintable(name.whyNot()))

// The admin tool as installed in the test's program folder: what it backs up goes to that
// folder's Backup/. Gives its exit code; `output` gets what it printed.
int RunAdmin(Harness& harness, const QStringList& arguments, QString* output = nullptr);
// The same, started and left running.
std::unique_ptr<QProcess> StartAdmin(Harness& harness, const QStringList& arguments);

// Whether a process runs whose command line holds the text.
bool ProcessRuns(const QString& commandLinePart);
