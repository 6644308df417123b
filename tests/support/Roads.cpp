#include "support/Roads.h"

#include "customer/FrmKokyaku.h"
#include "customer/UriageEntry.h"
#include "frame/Globals.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xNum.h"
#include "platform/ui/ShowModal.h"

#include <QComboBox>
#include <QPushButton>
#include <QTest>

bool OpenRegister(Harness& harness, qint64 customerNo,
                  const std::function<void(FrmKokyaku&)>& drive, const QString& tel) {
    FrmKokyaku screen;
    screen.setSyori(customerNo);
    screen.setTEL(tel);
    harness.screens.expect<FrmKokyaku>(drive);
    ShowModal(screen);
    return screen.Koushin();
}

void EnterPurchase(UriageEntry& e, const QDate& date, int item, int youto, int frame, int lens) {
    e.txtDatc->setDate(date);
    e.cboItem->setCurrentIndex(item);
    e.cboYoto->setCurrentIndex(youto);
    e.txtFm_Kinga->setValue(frame);
    e.txtLz_Kinga->setValue(lens);
    e.txtKingaKci->setValue(frame + lens);
    QTest::mouseClick(e.cmdOk, Qt::LeftButton);
}

QList<int> StoredSeqs(qint64 customerNo) {
    RecordSet rows = gCon.execute(
        QStringLiteral("select Uri_Seq from San_Uriage where Uri_UserNo = %1 order by Uri_Seq")
            .arg(customerNo));
    QList<int> seqs;
    for (; !rows.eof(); rows.moveNext())
        seqs << rows.field(0).toInt();
    return seqs;
}
