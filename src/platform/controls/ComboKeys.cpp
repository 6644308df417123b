#include "platform/controls/ComboKeys.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QPointer>

namespace {

class ComboKeyFilter : public QObject {
public:
    ComboKeyFilter(QComboBox* list, int key, QWidget* next)
        : QObject(list), list_(list), key_(key), next_(next) {
        list->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != list_ || event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
        if (key_ == Qt::Key_Delete && key == Qt::Key_Delete) {
            list_->setCurrentIndex(-1);
            return true;
        }
        if (key_ == Qt::Key_Return && enter && next_ && !list_->view()->isVisible()) {
            next_->setFocus();
            return true;
        }
        return false;
    }

private:
    QComboBox* list_;
    int key_;
    QPointer<QWidget> next_;
};

} // namespace

void MoveOnEnter(QComboBox* list, QWidget* next) {
    new ComboKeyFilter(list, Qt::Key_Return, next);
}

void ClearOnDelete(QComboBox* list) {
    new ComboKeyFilter(list, Qt::Key_Delete, nullptr);
}
