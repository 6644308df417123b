#include "print/FrmPrint.h"

#include "data/SettingStore.h"
#include "domain/Household.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/report/Report.h"
#include "platform/report/ReportJob.h"
#include "platform/ui/Clock.h"
#include "platform/ui/WaitCursor.h"
#include "print/PrintRun.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <cmath>

namespace {

const QString ScreenName = QStringLiteral("印刷フォーム選択画面");
const QString PostcardSettings = QStringLiteral(" 1,9,2970,2100,,1,7,,2,1,,,0");
constexpr int LinesPerPage = 36;
constexpr int Representative = 0;

} // namespace

FrmPrint::FrmPrint(std::vector<ListRow> rows, bool allCustomers, QWidget* parent)
    : Screen(parent), rows_(std::move(rows)), allCustomers_(allCustomers) {
    setObjectName(QStringLiteral("FrmPrint"));
    setWindowTitle(QStringLiteral("印刷選択"));
    const QString captions[] = {QStringLiteral("縦ハガキ印刷"), QStringLiteral("顧客台帳 印刷"),
                                QStringLiteral("横ハガキ印刷")};
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(24, 20, 24, 20);
    for (int i = 0; i < 3; ++i) {
        cmdPrint[i] = new QPushButton(captions[i], this);
        cmdPrint[i]->setObjectName(QStringLiteral("cmdPrint(%1)").arg(i));
        cmdPrint[i]->setAutoDefault(false);
        cmdPrint[i]->setMinimumSize(240, 44);
        connect(cmdPrint[i], &QPushButton::clicked, this, [this, i] { cmdPrint_Click(i); });
        page->addWidget(cmdPrint[i]);
    }
    cmdEnd = new QPushButton(QStringLiteral("閉じる"), this);
    cmdEnd->setObjectName(QStringLiteral("cmdEnd"));
    cmdEnd->setAutoDefault(false);
    cmdEnd->setMinimumSize(240, 44);
    connect(cmdEnd, &QPushButton::clicked, this, [this] { done(QDialog::Accepted); });
    new QShortcut(QKeySequence(Qt::Key_Escape), this, cmdEnd, &QPushButton::click);
    page->addSpacing(10);
    page->addWidget(cmdEnd);
    buildPrintOptions(page);
}

void FrmPrint::showEvent(QShowEvent* event) {
    // The screen is worked with the keys: the focused button shows its focus from the start,
    // not only after a first Tab.
    setAttribute(Qt::WA_KeyboardFocusChange);
    Screen::showEvent(event);
}

void FrmPrint::cmdPrint_Click(int index) {
    layout_.clear();
    const QString questions[] = {OpeQes_009, OpeQes_010, OpeQes_012};
    if (CmnDspMsg(questions[index]) != Answer::Yes)
        return;
    WaitCursor wait;
    if (index == 2)
        layout_ = QStringLiteral("1");
    if (index == 1)
        PrintSeigyo2();
    else
        PrintSeigyo();
}

void FrmPrint::PrintSeigyo() {
    runJob(QStringLiteral("PrintSeigyo"), PostcardSettings, QStringLiteral("顧客ハガキ"),
           [this](ReportJob& job) {
               if (layout_.isEmpty())
                   PrintSetData(job);
               else
                   PrintSetData3(job);
           });
}

void FrmPrint::PrintSeigyo2() {
    runJob(QStringLiteral("PrintSeigyo2"), A4ListSettings, QStringLiteral("顧客台帳"),
           [this](ReportJob& job) { PrintSetData2(job); });
}

void FrmPrint::runJob(const QString& procedure, const QString& settings,
                      const QString& documentName, const std::function<void(ReportJob&)>& pages) {
    RunPrint(this, {ScreenName, procedure, settings, documentName}, [&](ReportJob& job) {
        setPrintOptions(job);
        pages(job);
    });
}

void FrmPrint::setAddressee(ReportJob& job, const ListedCustomer& c) {
    job.setField(QStringLiteral("Jusyo1"), c.jusyo1.trimmed());
    job.setField(QStringLiteral("Jusyo2"), c.jusyo2.trimmed());
    const QString name = c.name.trimmed();
    // A household's representative in a list of everyone is written to as the family.
    if (allCustomers_ && c.kazok == Representative) {
        job.setField(QStringLiteral("Name"), name);
        job.setField(QStringLiteral("Sama"), QStringLiteral("御家族様"));
    } else {
        job.setField(QStringLiteral("Name"), name + QStringLiteral("  様"));
    }
}

void FrmPrint::PrintSetData(ReportJob& job) {
    job.setForm(FormPath(QStringLiteral("PrnSan001.jfm")));
    for (const Card& card : cards()) {
        const QString code = card.customer->yubin.trimmed();
        if (!code.isEmpty()) {
            const QString digits = code.left(3) + code.mid(4, 4);
            for (int i = 0; i < 7; ++i)
                job.setField(QStringLiteral("Yubin_%1").arg(i + 1), digits.mid(i, 1));
        }
        setCardAddressee(job, card);
        job.printPage();
    }
}

void FrmPrint::PrintSetData3(ReportJob& job) {
    job.setForm(FormPath(QStringLiteral("PrnSan004.jfm")));
    for (const Card& card : cards()) {
        const QString code = card.customer->yubin.trimmed();
        if (!code.isEmpty())
            job.setField(QStringLiteral("Yubin"), QStringLiteral("〒 ") + code);
        setCardAddressee(job, card);
        job.printPage();
    }
}

void FrmPrint::PrintSetData2(ReportJob& job) {
    job.setForm(FormPath(QStringLiteral("PrnSan003.jfm")));
    const QDate today = Today();
    std::size_t next = 0;
    for (int page = 1; next < rows_.size(); ++page) {
        SetListHeading(job, today, page);
        for (int line = 1; line <= LinesPerPage && next < rows_.size(); ++line, ++next) {
            const ListedCustomer& c = rows_[next].now;
            const auto set = [&](const char* field, const QString& value) {
                job.setField(QString::fromLatin1(field) + QString::number(line), value.trimmed());
            };
            set("Name_", c.name);
            set("Yubin_", c.yubin);
            set("Jusyo1_", c.jusyo1);
            set("Jusyo2_", c.jusyo2);
            set("LastDate_", FormatYmd(c.lastVisit));
            set("Tel_", c.tel);
        }
        job.printPage();
    }
}

// The cards of the marked customers: one each, or one per household.
std::vector<FrmPrint::Card> FrmPrint::cards() const {
    std::vector<Card> cards;
    if (!chkRenmei->isChecked()) {
        for (const ListRow& row : rows_)
            if (row.marked)
                cards.push_back({&row.now, {}, {}});
        return cards;
    }
    for (const Household& household : MarkedHouseholds(rows_)) {
        if (household.size() == 1) {
            cards.push_back({household.front(), {}, {}});
            continue;
        }
        const Addressee addressee = HouseholdAddressee(household);
        cards.push_back({household.front(), addressee.name, addressee.sama});
    }
    return cards;
}

void FrmPrint::setCardAddressee(ReportJob& job, const Card& card) {
    if (card.name.isEmpty()) {
        setAddressee(job, *card.customer);
        return;
    }
    job.setField(QStringLiteral("Jusyo1"), card.customer->jusyo1.trimmed());
    job.setField(QStringLiteral("Jusyo2"), card.customer->jusyo2.trimmed());
    job.setField(QStringLiteral("Name"), card.name);
    if (!card.sama.isEmpty())
        job.setField(QStringLiteral("Sama"), card.sama);
}

void FrmPrint::buildPrintOptions(QVBoxLayout* page) {
    auto* group = new QGroupBox(QStringLiteral("印刷の設定"), this);
    auto* form = new QFormLayout(group);
    const auto check = [&](QCheckBox*& box, const char* name, const QString& caption) {
        box = new QCheckBox(caption, group);
        box->setObjectName(QString::fromLatin1(name));
        form->addRow(box);
    };
    check(chkRenmei, "chkRenmei", QStringLiteral("連名 (同じ電話番号と住所の家族に一枚)"));
    check(chkKansuji, "chkKansuji", QStringLiteral("縦書きの番地を漢数字で印刷"));
    check(chkYubinWaku, "chkYubinWaku",
          QStringLiteral("郵便番号の枠も印刷 (無地の用紙; 官製はがきは数字のみ)"));
    const auto offset = [&](QDoubleSpinBox*& box, const char* name, const QString& caption) {
        box = new QDoubleSpinBox(group);
        box->setObjectName(QString::fromLatin1(name));
        box->setRange(-20, 20);
        box->setDecimals(1);
        box->setSingleStep(0.5);
        box->setSuffix(QStringLiteral(" mm"));
        box->setKeyboardTracking(false);
        form->addRow(caption, box);
    };
    offset(txtOffsetX, "txtOffsetX", QStringLiteral("印刷位置の補正 右へ"));
    offset(txtOffsetY, "txtOffsetY", QStringLiteral("印刷位置の補正 下へ"));
    page->insertWidget(0, group);
    page->insertSpacing(1, 10);
    Procedure(ScreenName, QStringLiteral("Disp_Offset"), QStringLiteral("印刷位置の取得処理"), [&] {
        const SettingStore::PrintOffset saved = SettingStore::ReadPrintOffset();
        txtOffsetX->setValue(saved.x);
        txtOffsetY->setValue(saved.y);
    });
    for (QDoubleSpinBox* box : {txtOffsetX, txtOffsetY})
        connect(box, &QDoubleSpinBox::valueChanged, this, [this] { saveOffset(); });
}

void FrmPrint::saveOffset() {
    Procedure(ScreenName, QStringLiteral("Save_Offset"), QStringLiteral("印刷位置の保存処理"), [&] {
        SettingStore::WritePrintOffset({txtOffsetX->value(), txtOffsetY->value()});
    });
}

void FrmPrint::setPrintOptions(ReportJob& job) {
    job.setLong(ReportOption::KanjiNumerals, chkKansuji->isChecked() ? 1 : 0);
    job.setLong(ReportOption::PlainPaper, chkYubinWaku->isChecked() ? 1 : 0);
    job.setLong(ReportOption::OffsetX, std::lround(txtOffsetX->value() * 10));
    job.setLong(ReportOption::OffsetY, std::lround(txtOffsetY->value() * 10));
}
