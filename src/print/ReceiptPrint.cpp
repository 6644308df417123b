#include "print/ReceiptPrint.h"

#include "platform/Format.h"
#include "platform/report/ReportJob.h"
#include "platform/ui/WaitCursor.h"
#include "print/PrintRun.h"

namespace {

QString yen(qint64 amount) {
    return QStringLiteral("¥") + FormatYen(amount);
}

QString day(const QDate& date) {
    return date.isValid() ? date.toString(QStringLiteral("yyyy年MM月dd日")) : QString();
}

} // namespace

QHash<QString, QString> ReceiptFields(const Receipt& r, bool reprint) {
    QHash<QString, QString> f;
    const bool medical = r.kind == ReceiptKind::Medical;
    f[QStringLiteral("Title")] =
        medical ? QStringLiteral("領収書（医療費控除・療養費用）") : QStringLiteral("領　収　書");
    if (reprint)
        f[QStringLiteral("Mark")] = QStringLiteral("再発行");
    if (r.cancelled)
        f[QStringLiteral("Cancelled")] = QStringLiteral("取　消");
    f[QStringLiteral("No")] = QStringLiteral("No. %1").arg(r.no, 6, 10, QLatin1Char('0'));
    f[QStringLiteral("IssuedOn")] = QStringLiteral("発行日 ") + day(r.issuedAt.date());
    const QString addressee = r.addressee.trimmed();
    f[QStringLiteral("Name")] =
        addressee == QStringLiteral("上様") ? addressee : addressee + QStringLiteral("  様");
    f[QStringLiteral("Amount")] = yen(r.received) + QLatin1Char('-');
    f[QStringLiteral("Proviso")] = r.paymentNo == 0
                                       ? QStringLiteral("但し　眼鏡代として")
                                       : QStringLiteral("但し　眼鏡代のうちご入金分として");
    for (std::size_t i = 0; i < r.lines.size() && i < 3; ++i) {
        const QString n = QString::number(i + 1);
        f[QStringLiteral("Line") + n] = r.lines[i].caption;
        f[QStringLiteral("Amount") + n] = yen(r.lines[i].amount);
    }
    f[QStringLiteral("Total")] = yen(r.total);
    f[QStringLiteral("ReceivedCaption")] =
        QStringLiteral("%1\n（お支払方法：%2）")
            .arg(r.paymentNo == 0 ? QStringLiteral("領収金額") : QStringLiteral("今回ご入金額"),
                 PaymentMethodText(r.method));
    f[QStringLiteral("Received")] = yen(r.received);
    for (std::size_t i = 0; i < r.taxes.size() && i < 2; ++i)
        f[QStringLiteral("Tax") + QString::number(i + 1)] =
            QStringLiteral("%1%対象 %2（内消費税 %3）")
                .arg(r.taxes[i].percent)
                .arg(yen(r.taxes[i].total), yen(r.taxes[i].tax));
    QString dates = QStringLiteral("お買上げ日 ") + day(r.purchaseDate);
    if (medical)
        dates += QStringLiteral("\n処方箋の日付 ") + day(r.prescriptionDate);
    f[QStringLiteral("Dates")] = dates;
    if (r.stamp)
        f[QStringLiteral("Stamp")] = QStringLiteral("収入\n印紙");
    f[QStringLiteral("ShopName")] = r.shopName.trimmed();
    f[QStringLiteral("ShopAddress")] = r.shopAddress.trimmed();
    f[QStringLiteral("ShopTel")] = r.shopTel.trimmed();
    if (!r.invoiceNo.isEmpty())
        f[QStringLiteral("InvoiceNo")] = QStringLiteral("登録番号 ") + r.invoiceNo;
    return f;
}

bool PrintReceipt(QWidget* window, const Receipt& receipt, bool reprint) {
    WaitCursor wait;
    const QHash<QString, QString> fields = ReceiptFields(receipt, reprint);
    return RunPrint(
        window, {ReceiptTitle, QStringLiteral("PrintReceipt"), A5SlipSettings, ReceiptTitle},
        [&](ReportJob& job) {
            SetPrinterOffset(job);
            job.setForm(FormPath(QStringLiteral("PrnSan007.jfm")));
            for (auto field = fields.begin(); field != fields.end(); ++field)
                job.setField(field.key(), field.value());
            job.printPage();
        },
        ReceiptTitle);
}
