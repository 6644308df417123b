#include "platform/controls/xClndr.h"

#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

xClndr::xClndr(QWidget* parent) : QWidget(parent) {
    days_ = new QCalendarWidget(this);
    days_->setObjectName(QStringLiteral("days"));
    days_->setLocale(QLocale(QLocale::Japanese, QLocale::Japan));
    days_->setNavigationBarVisible(false);
    days_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    days_->setFirstDayOfWeek(Qt::Sunday);
    days_->setGridVisible(true);
    QTextCharFormat saturday = days_->weekdayTextFormat(Qt::Saturday);
    saturday.setForeground(QColor(0x1E, 0x5A, 0xC8));
    days_->setWeekdayTextFormat(Qt::Saturday, saturday);

    const auto button = [this](const char* caption, const char* name, const char* tip) {
        auto* made = new QToolButton(this);
        made->setText(QString::fromUtf8(caption));
        made->setObjectName(QLatin1String(name));
        made->setToolTip(QString::fromUtf8(tip));
        return made;
    };
    previousYear_ = button("≪", "previousYear", "前の年");
    previous_ = button("◀", "previous", "前の月");
    next_ = button("▶", "next", "次の月");
    nextYear_ = button("≫", "nextYear", "次の年");
    heading_ = new QLabel(this);
    heading_->setAlignment(Qt::AlignCenter);
    QFont bold = heading_->font();
    bold.setBold(true);
    heading_->setFont(bold);

    auto* bar = new QHBoxLayout;
    bar->addWidget(previousYear_);
    bar->addWidget(previous_);
    bar->addWidget(heading_, 1);
    bar->addWidget(next_);
    bar->addWidget(nextYear_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(bar);
    column->addWidget(days_);

    connect(previous_, &QToolButton::clicked, days_, &QCalendarWidget::showPreviousMonth);
    connect(next_, &QToolButton::clicked, days_, &QCalendarWidget::showNextMonth);
    connect(previousYear_, &QToolButton::clicked, days_, &QCalendarWidget::showPreviousYear);
    connect(nextYear_, &QToolButton::clicked, days_, &QCalendarWidget::showNextYear);
    connect(days_, &QCalendarWidget::currentPageChanged, this, &xClndr::showPage);
    connect(days_, &QCalendarWidget::selectionChanged, this,
            [this] { emit changed(days_->selectedDate()); });
    showPage(days_->yearShown(), days_->monthShown());
}

QString xClndr::monthName(int month) {
    static const QString names[] = {
        QStringLiteral("１月"),   QStringLiteral("２月"),   QStringLiteral("３月"),
        QStringLiteral("４月"),   QStringLiteral("５月"),   QStringLiteral("６月"),
        QStringLiteral("７月"),   QStringLiteral("８月"),   QStringLiteral("９月"),
        QStringLiteral("１０月"), QStringLiteral("１１月"), QStringLiteral("１２月")};
    return month >= 1 && month <= 12 ? names[month - 1] : QString();
}

QDate xClndr::Value() const {
    return days_->selectedDate();
}

void xClndr::setValue(const QDate& date) {
    days_->setSelectedDate(date);
    days_->setCurrentPage(date.year(), date.month());
}

QString xClndr::heading() const {
    return heading_->text();
}

void xClndr::showPage(int year, int month) {
    heading_->setText(QStringLiteral("%1年 ").arg(year) + monthName(month));
}
