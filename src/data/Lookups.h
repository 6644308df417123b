#pragma once

#include <QHash>
#include <QString>

// The name of a master from its three-digit code: Kind 0 item, 1 purpose, 2 maker.
// Empty text when no master has the code.
QString CmnGetMaster(int kind, const QString& no);

// CmnGetMaster for the rows of one listing: each kind and code is looked up once.
class MasterNames {
public:
    QString name(int kind, const QString& no);

private:
    QHash<QString, QString> names_;
};

// The address of a postal code from the postal directory: prefecture (when withTodo), city and
// district joined without separators. Empty text when the code is not listed.
QString CmnGetJusyo(bool withTodo, qint64 zip1, qint64 zip2);
