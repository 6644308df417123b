#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// Rows for a test's database, written with plain SQL so that what the screens read does not
// depend on the screens' own writing.

struct CustomerRow {
    qint64 no = 1;
    QString name = QStringLiteral("山田 太郎"), kana = QStringLiteral("やまだ たろう");
    QString tel = QStringLiteral("011-222-3333"), yubin = QStringLiteral("060-0042");
    QString jusyo1 = QStringLiteral("札幌市中央区大通西"), jusyo2 = QStringLiteral("1-2-3");
    int sex = 0, kazok = 0, tanjoGo = 1;
    int nen = 45, mon = 5, day = 3;
    QString entry1 = QStringLiteral("2020/04/01");
    QString dltF = QString(); // a null QString writes NULL
};

void InsertCustomer(const CustomerRow& row);

struct PurchaseRow {
    qint64 user = 1;
    int seq = 1, ymd = 20260101;
    QString item = QStringLiteral("001"), youto = QStringLiteral("001");
    QString frameMaker = QStringLiteral("001"), lensMaker = QStringLiteral("002");
    int frame = 20000, lens = 18000, total = 38000;
    double rightSph = -1.25, leftSph = -1.5;
    QString syohou = QStringLiteral("遠近"), memo = {};
};

void InsertPurchase(const PurchaseRow& row);

// A receipt as issued, for a test that needs one on a given day and does not look at its lines.
struct ReceiptRow {
    qint64 no = 1, user = 1;
    int seq = 1;
    qint64 received = 0;
    QDateTime issued;
};

void InsertReceipt(const ReceiptRow& row);

// The values of one row's columns, by name, as text.
QStringList RowTexts(const QString& sql, const QStringList& columns);
