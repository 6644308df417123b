#include "print/OrderSlip.h"

#include "data/CustomerStore.h"
#include "data/Lookups.h"
#include "data/OrderStore.h"
#include "data/PurchaseStore.h"
#include "data/ShopStore.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/report/Report.h"
#include "platform/report/ReportJob.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/WaitCursor.h"
#include "print/PrintRun.h"

#include <algorithm>

namespace {

struct Slip {
    ShopDetails shop;
    Customer customer;
    Purchase purchase;
    OrderStore::OrderState state;
};

Slip readSlip(qint64 customerNo, int seq) {
    Slip slip;
    const std::optional<Customer> customer = CustomerStore::Find(customerNo);
    const std::vector<Purchase> purchases = PurchaseStore::OfCustomer(customerNo);
    const auto purchase = std::find_if(purchases.begin(), purchases.end(),
                                       [seq](const Purchase& p) { return p.seq == seq; });
    if (!customer || purchase == purchases.end())
        throw Failure(ErrorNumber::RowDeleted,
                      QStringLiteral("顧客番号 %1 の売上（No.%2）は他の端末が削除しました。"
                                     "預り証は印刷できません。")
                          .arg(customerNo)
                          .arg(seq));
    slip.shop = ShopStore::Read();
    slip.customer = *customer;
    slip.purchase = *purchase;
    slip.state = OrderStore::OfPurchase(customerNo, seq);
    return slip;
}

QString yen(qint64 amount) {
    return FormatYen(amount) + QStringLiteral("円");
}

void setFields(ReportJob& job, const Slip& s) {
    const auto set = [&](const char* field, const QString& text) {
        job.setField(QString::fromLatin1(field), text.trimmed());
    };
    set("ShopName", s.shop.name);
    set("ShopAddress", s.shop.address);
    set("ShopTel", s.shop.tel);
    set("Name", s.customer.name.trimmed() + QStringLiteral("  様"));
    const Purchase& p = s.purchase;
    set("OrderNo", OrderNumberText(s.customer.no, p.seq));
    set("OrderDate", PurchaseDateText(p));
    MasterNames masters;
    set("ItemName", masters.name(MasterKind::Item, p.itemNo));
    // A part not sold (no maker, no name, nothing charged) leaves its line empty.
    const auto part = [&](const char* maker, const char* name, const char* amount,
                          const QString& makerNo, const QString& partName, qint64 kinga) {
        set(maker, masters.name(MasterKind::Meka, makerNo));
        set(name, partName);
        const bool sold = !makerNo.isEmpty() || !partName.trimmed().isEmpty() || kinga != 0;
        set(amount, sold ? yen(kinga) : QString());
    };
    part("FmMaker", "FmName", "FmKinga", p.fmMekaNo, p.fmName, p.fmKinga);
    part("LzMaker", "LzName", "LzKinga", p.lzMekaNo, p.lzName, p.lzKinga);
    set("Total", yen(p.total));
    // A purchase without an order is a completed sale, paid in full.
    const std::optional<Order>& order = s.state.order;
    set("Paid", yen(order ? PaidAmount(s.state.payments) : p.total));
    set("Balance", yen(order ? OutstandingAmount(p.total, order->status, s.state.payments) : 0));
    set("Due", order && order->due.isValid() ? order->due.toString(QStringLiteral("yyyy/MM/dd"))
                                             : QStringLiteral("未定"));
}

} // namespace

void PrintOrderSlip(QWidget* parent, qint64 customerNo, int seq) {
    std::optional<Slip> slip;
    Procedure(OrderSlipTitle, QStringLiteral("PrintOrderSlip"), QStringLiteral("預り証の印刷処理"),
              [&] { slip = readSlip(customerNo, seq); },
              {.titlePrefix = VbErrorTitleWide, .ownMessage = [](const Failure& failure) {
                   if (failure.number() != ErrorNumber::RowDeleted)
                       return false;
                   MsgBox(failure.description(), MsgIcon::Exclamation, MsgButtons::OK,
                          OrderSlipTitle);
                   return true;
               }});
    if (!slip)
        return;
    if (slip->shop.name.trimmed().isEmpty())
        MsgBox(ShopNotSetText, MsgIcon::Exclamation, MsgButtons::OK, OrderSlipTitle);
    WaitCursor wait;
    RunPrint(
        parent, {OrderSlipTitle, QStringLiteral("PrintOrderSlip"), A5SlipSettings, OrderSlipTitle},
        [&](ReportJob& job) {
            SetPrinterOffset(job);
            job.setForm(FormPath(QStringLiteral("PrnSan005.jfm")));
            setFields(job, *slip);
            job.printPage();
        },
        OrderSlipTitle);
}
