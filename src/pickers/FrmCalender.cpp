#include "pickers/FrmCalender.h"

#include "platform/controls/xClndr.h"
#include "platform/controls/xDate.h"
#include "platform/ui/Clock.h"

#include <QCalendarWidget>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

FrmCalender::FrmCalender(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmCalender"));
    setWindowTitle(QStringLiteral("カレンダー"));

    xClndr1 = new xClndr(this);
    xClndr1->setObjectName(QStringLiteral("xClndr1"));
    xClndr1->setMinimumSize(360, 260);
    const QString captions[] = {QStringLiteral("ＯＫ"), QStringLiteral("ｷｬﾝｾﾙ")};
    for (int i = 0; i < 2; ++i) {
        cmdSelect[i] = new QPushButton(captions[i], this);
        cmdSelect[i]->setObjectName(QStringLiteral("cmdSelect(%1)").arg(i));
        cmdSelect[i]->setAutoDefault(false);
        cmdSelect[i]->setMinimumWidth(96);
        connect(cmdSelect[i], &QPushButton::clicked, this, [this, i] { cmdSelect_Click(i); });
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSelect[0]);
    buttons->addWidget(cmdSelect[1]);
    auto* page = new QVBoxLayout(this);
    page->addWidget(xClndr1, 1);
    page->addLayout(buttons);
    setTabOrder(cmdSelect[1], cmdSelect[0]);

    connect(xClndr1, &xClndr::changed, this, [this](const QDate& date) { resultDate_ = date; });
    // A double-click (or Enter) on a day picks it and closes, as "ＯＫ" does.
    connect(xClndr1->days(), &QCalendarWidget::activated, this, [this] { cmdSelect_Click(0); });
    new QShortcut(QKeySequence(Qt::Key_Escape), this, this, [this] { cmdSelect_Click(1); });
}

void FrmCalender::setInDate(const QDate& date) {
    // An empty field (or one that is not a date) opens on today.
    const QDate shown = date.isValid() && date != xDate::EmptyDate ? date : Today();
    resultDate_ = shown;
    xClndr1->setValue(shown);
}

void FrmCalender::cmdSelect_Click(int index) {
    endType_ = index == 0;
    done(endType_ ? QDialog::Accepted : QDialog::Rejected);
}

void FrmCalender::closeEvent(QCloseEvent* event) {
    endType_ = false;
    Screen::closeEvent(event);
}
