#include "search/FrmIchiranSub.h"

#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/controls/SpreadGrid.h"
#include "platform/controls/xLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

const QString ScreenName = QStringLiteral("指定顧客売上照会画面");

QString withName(MasterNames& masters, const QString& code, int kind) {
    return code + QLatin1Char(':') + masters.name(kind, code);
}

QString makerWithName(MasterNames& masters, const QString& code) {
    return code.isEmpty() ? QString() : withName(masters, code, 2);
}

} // namespace

FrmIchiranSub::FrmIchiranSub(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmIchiranSub"));
    setWindowTitle(QStringLiteral("指定顧客売上履歴照会"));
    spdData = new SpreadGrid(this);
    spdData->setObjectName(QStringLiteral("spdData"));
    spdData->setHeaders({QStringLiteral("売上日"), QStringLiteral("ｱｲﾃﾑ"), QStringLiteral("用途"),
                         QStringLiteral("ﾌﾚｰﾑﾒｰｶｰ"), QStringLiteral("ﾌﾚｰﾑ名"),
                         QStringLiteral("ﾌﾚｰﾑ金額"), QStringLiteral("ﾚﾝｽﾞﾒｰｶｰ"),
                         QStringLiteral("ﾚﾝｽﾞ名"), QStringLiteral("ﾚﾝｽﾞ金額"),
                         QStringLiteral("売上合計額")});
    spdData->setColumnWidths({92, 130, 130, 120, 120, 86, 120, 120, 86, 96});
    for (int column : {6, 9, 10}) {
        spdData->setColumnNumeric(column, true);
        spdData->setColumnDisplayFormat(column, QStringLiteral("###,###,##0"));
    }
    spdData->setMinimumSize(1000, 360);
    lblKaisu = new xLabel(this);
    lblKaisu->setObjectName(QStringLiteral("lblKaisu"));
    lblKinga = new xLabel(this);
    lblKinga->setObjectName(QStringLiteral("lblKinga"));
    for (xLabel* total : {lblKaisu, lblKinga}) {
        total->setMinimumWidth(110);
        total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    cmdEnd = new QPushButton(QStringLiteral("閉じる"), this);
    cmdEnd->setObjectName(QStringLiteral("cmdEnd"));
    cmdEnd->setAutoDefault(false);
    cmdEnd->setMinimumSize(110, 36);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(new QLabel(QStringLiteral("来店回数"), this));
    bottom->addWidget(lblKaisu);
    bottom->addSpacing(16);
    bottom->addWidget(new QLabel(QStringLiteral("売上累計額"), this));
    bottom->addWidget(lblKinga);
    bottom->addStretch();
    bottom->addWidget(cmdEnd);
    auto* page = new QVBoxLayout(this);
    page->addWidget(spdData, 1);
    page->addLayout(bottom);
    connect(cmdEnd, &QPushButton::clicked, this, [this] { done(QDialog::Accepted); });
    new QShortcut(QKeySequence(Qt::Key_Escape), this, this, [this] { done(QDialog::Accepted); });
}

void FrmIchiranSub::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!loaded_) {
        loaded_ = true;
        Form_Load();
    }
}

void FrmIchiranSub::Form_Load() {
    Procedure(ScreenName, QStringLiteral("Form_Load"),
              QStringLiteral("指定顧客売上照会画面ロード処理"), [&] {
                  spdData->clearRows();
                  lblKaisu->setText(QStringLiteral("0"));
                  lblKinga->setText(QStringLiteral("0"));
                  SerchUriage(user_);
              });
}

bool FrmIchiranSub::CalUriageGaku(qint64 customerNo) {
    bool inRange = false;
    Procedure(ScreenName, QStringLiteral("CalUriageGaku"), QStringLiteral("顧客売上額集計検索処理"),
              [&] {
                  const QVariant sum = gCon.execute(AmountQuery(conditions_, customerNo)).field(0);
                  inRange = AmountInRange(conditions_, CmnNvl(sum, 0).toLongLong());
              });
    return inRange;
}

void FrmIchiranSub::SerchUriage(qint64 customerNo) {
    Procedure(ScreenName, QStringLiteral("SerchUriage"), QStringLiteral("顧客売上側検索処理"), [&] {
        RecordSet rows = gCon.execute(InquiryQuery(conditions_, customerNo));
        // The amount check depends on the customer alone: every purchase is listed, or none.
        const bool listed = !conditions_.on[SearchConditions::Amount] || CalUriageGaku(customerNo);
        MasterNames masters;
        int visits = 0;
        qint64 lastDate = 0;
        qint64 sum = 0;
        for (; listed && !rows.eof(); rows.moveNext()) {
            const auto text = [&](const char* column) {
                return CmnNvl(rows.field(QString::fromLatin1(column)), QString()).toString();
            };
            const qint64 date = rows.field(QStringLiteral("Uri_Date")).toLongLong();
            if (date != lastDate) {
                ++visits;
                lastDate = date;
            }
            spdData->addRow(
                QStringList{FormatYmd(date), withName(masters, text("Uri_ItemNo"), 0),
                            withName(masters, text("Uri_YoutoNo"), 1),
                            makerWithName(masters, text("Uri_Fm_MekaNo")), text("Uri_Fm_Name"),
                            text("Uri_Fm_Kinga"), makerWithName(masters, text("Uri_Lz_MekaNo")),
                            text("Uri_Lz_Name"), text("Uri_Lz_Kinga"), text("Uri_KingaKei")}
                    .join(QLatin1Char('\t')));
            sum += CmnNvl(rows.field(QStringLiteral("Uri_KingaKei")), 0).toLongLong();
        }
        lblKaisu->setText(FormatNumber(visits, QStringLiteral("###,###,##0")));
        lblKinga->setText(QStringLiteral("\\") +
                          FormatNumber(double(sum), QStringLiteral("###,###,##0")));
    });
}
