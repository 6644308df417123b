#include "platform/controls/FunctionKeyRow.h"

#include "platform/controls/xCmdBtn.h"

#include <QHBoxLayout>

FunctionKeyRow::FunctionKeyRow(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("cmdFnuc"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    for (int i = 0; i < 12; ++i) {
        buttons_[i] = new xCmdBtn(Qt::Key(Qt::Key_F1 + i), QString(), this);
        buttons_[i]->setObjectName(QStringLiteral("cmdFnuc(%1)").arg(i));
        buttons_[i]->setMinimumHeight(40);
        buttons_[i]->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        connect(buttons_[i], &xCmdBtn::triggered, this, [this, i] { emit pressed(i); });
        row->addWidget(buttons_[i]);
        // A gap after every fourth key, as on the keyboard.
        if (i == 3 || i == 7)
            row->addSpacing(10);
    }
}

void FunctionKeyRow::setCaptions(const std::array<QString, 12>& captions) {
    for (int i = 0; i < 12; ++i)
        buttons_[i]->setCaption(captions[i]);
}
