#pragma once

#include "domain/Receipt.h"

#include <QHash>
#include <QString>

class QWidget;

// The receipt (領収書) on A5 portrait paper, printed from the receipt as it was issued, so a
// reprint shows what the first print showed, marked 再発行; a cancelled one is marked 取消.
inline const QString ReceiptTitle = QStringLiteral("領収書");

// The form's fields of the receipt.
QHash<QString, QString> ReceiptFields(const Receipt& receipt, bool reprint);

// Prints it; failures are told in boxes, a PDF is announced. True when printed.
bool PrintReceipt(QWidget* window, const Receipt& receipt, bool reprint);
