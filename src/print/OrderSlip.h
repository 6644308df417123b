#pragma once

#include <QString>

class QWidget;

// The slip (預り証) the customer takes home with an order, on A5: the shop, the customer, the
// order's number and date, what was ordered with its amounts, the total, what was paid, the
// balance and the promised date.
inline const QString OrderSlipTitle = QStringLiteral("預り証");

// Before the first slip the shop's name is set: printed without it, the slip is told first.
inline const QString ShopNotSetText =
    QStringLiteral("店舗の名前が設定されていません。店名・住所・電話番号のない預り証を印刷します。"
                   "メニューの「店舗設定」で登録してください。");

// Prints the slip of the customer's purchase; failures are told in boxes.
void PrintOrderSlip(QWidget* parent, qint64 customerNo, int seq);
