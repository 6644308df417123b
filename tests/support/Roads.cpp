#include "support/Roads.h"

#include "customer/FrmKokyaku.h"
#include "customer/UriageEntry.h"
#include "frame/Conflicts.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xNum.h"
#include "support/Controls.h"
#include "support/ShopData.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QPushButton>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

void Commit(QWidget* field, const QString& text) {
    field->setFocus();
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(field, &event);
}

void Retype(QLineEdit* field, const QString& text) {
    field->setFocus();
    field->clear();
    QTest::keyClicks(field, text);
}

void Paste(QWidget* field, const QString& text) {
    field->setFocus();
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
}

bool OpenRegister(Harness& harness, qint64 customerNo,
                  const std::function<void(FrmKokyaku&)>& drive, const QString& tel) {
    harness.screens.expect<FrmKokyaku>(drive);
    return FrmKokyaku::Open(nullptr, customerNo, tel);
}

void EnterPurchase(UriageEntry& e, const QDate& date, int item, int youto, int frame, int lens) {
    Find<xDate>(e, u"txtDatc"_s).setDate(date);
    Find<QComboBox>(e, u"cboItem"_s).setCurrentIndex(item);
    Find<QComboBox>(e, u"cboYoto"_s).setCurrentIndex(youto);
    Find<xNum>(e, u"txtFm_Kinga"_s).setValue(frame);
    Find<xNum>(e, u"txtLz_Kinga"_s).setValue(lens);
    Find<xNum>(e, u"txtKingaKci"_s).setValue(frame + lens);
    QTest::mouseClick(&Find<QPushButton>(e, u"cmdOk"_s), Qt::LeftButton);
}

void ExpectSaved(Harness& harness) {
    harness.msgs.expect(OpeQes_001, Answer::Yes);
    harness.msgs.expect(OpeInf_001);
}

void ExpectBoxes(Harness& harness, std::initializer_list<QString> codes) {
    for (const QString& code : codes)
        harness.msgs.expect(code, code.startsWith(u"OpeQes") ? Answer::Yes : Answer::OK);
}

void ExpectConflict(Harness& harness, const QString& what, int answer) {
    harness.msgs.expectBoxStartingWith(what, ConflictTitle, answer);
}

QList<int> StoredSeqs(qint64 customerNo) {
    RecordSet rows = gCon.execute(
        u"select Uri_Seq from San_Uriage where Uri_UserNo = %1 order by Uri_Seq"_s.arg(customerNo));
    QList<int> seqs;
    for (; !rows.eof(); rows.moveNext())
        seqs << rows.field(0).toInt();
    return seqs;
}

namespace {
QString texts(const QString& sql, const QString& columns) {
    return RowTexts(sql, columns.split(QLatin1Char(' '))).join(QLatin1Char('|'));
}
} // namespace

QString CustomerTexts(qint64 customerNo, const QString& columns) {
    return texts(u"select * from San_User where User_No = %1"_s.arg(customerNo), columns);
}

QString PurchaseTexts(qint64 customerNo, int seq, const QString& columns) {
    return texts(
        u"select * from San_Uriage where Uri_UserNo = %1 and Uri_Seq = %2"_s.arg(customerNo)
            .arg(seq),
        columns);
}

QString ColumnTexts(const GridView& grid, int column) {
    QStringList cells;
    for (int row = 0; row < grid.rowCount(); ++row)
        cells << grid.gridModel()->index(row, column - 1).data().toString();
    return cells.join(QLatin1Char('|'));
}

QPoint RowCentre(const GridView& grid, int row) {
    return grid.view()->visualRect(grid.gridModel()->index(row - 1, 1)).center();
}
