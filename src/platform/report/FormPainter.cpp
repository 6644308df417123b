#include "platform/report/FormPainter.h"

#include <QFont>
#include <QPainter>

namespace {

constexpr double MmPerPoint = 25.4 / 72.0;

QFont formFont(double points) {
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPointSizeF(points);
    return font;
}

QRectF scaled(double k, double x, double y, double w, double h) {
    return QRectF(x * k, y * k, w * k, h * k);
}

void drawHorizontal(QPainter& painter, double k, const FormItem& item, const QString& text) {
    painter.setFont(formFont(item.points));
    painter.drawText(scaled(k, item.x, item.y, item.w, item.h),
                     int(item.align | Qt::AlignVCenter) | Qt::TextSingleLine, text);
}

// Top to bottom, one character under the other; a full column goes on to the left.
void drawVertical(QPainter& painter, double k, const FormItem& item, const QString& text) {
    const double size = item.points * MmPerPoint;
    const double step = size * 1.08;
    painter.setFont(formFont(item.points));
    const int perColumn = std::max(1, int(item.h / step));
    const int columns = int(text.size() + perColumn - 1) / perColumn;
    // A single column stands at the field's alignment; more columns start at the right edge.
    double firstColumnX = item.x + item.w - size;
    if (columns <= 1 && (item.align & Qt::AlignHCenter))
        firstColumnX = item.x + (item.w - size) / 2;
    else if (columns <= 1 && (item.align & Qt::AlignLeft))
        firstColumnX = item.x;
    for (int i = 0; i < text.size(); ++i) {
        const QRectF cell = scaled(k, firstColumnX - (i / perColumn) * step,
                                   item.y + (i % perColumn) * step, size, size);
        const QChar c = text[i];
        if (!TurnedInVerticalText(c)) {
            painter.drawText(cell, Qt::AlignCenter, QString(c));
            continue;
        }
        painter.save();
        painter.translate(cell.center());
        painter.rotate(90);
        painter.drawText(QRectF(-cell.width() / 2, -cell.height() / 2, cell.width(), cell.height()),
                         Qt::AlignCenter, QString(c));
        painter.restore();
    }
}

} // namespace

bool TurnedInVerticalText(QChar c) {
    static const QString turned =
        QStringLiteral("ー－―—‐-~〜～…‥()（）「」『』【】〔〕［］｛｝〈〉《》<>[]{}＝=");
    return turned.contains(c);
}

void DrawForm(QPainter& painter, double k, const FormTemplate& form,
              const QHash<QString, QString>& values) {
    for (const FormItem& item : form.items) {
        switch (item.kind) {
        case FormItem::Kind::Line:
            painter.setPen(QPen(Qt::black, item.pen * k));
            painter.drawLine(QPointF(item.x * k, item.y * k), QPointF(item.w * k, item.h * k));
            break;
        case FormItem::Kind::Box:
            painter.setPen(QPen(Qt::black, item.pen * k));
            painter.drawRect(scaled(k, item.x, item.y, item.w, item.h));
            break;
        case FormItem::Kind::Text:
        case FormItem::Kind::Field: {
            const QString text =
                item.kind == FormItem::Kind::Text ? item.name : values.value(item.name);
            if (text.isEmpty())
                break;
            painter.setPen(Qt::black);
            if (item.vertical)
                drawVertical(painter, k, item, text);
            else
                drawHorizontal(painter, k, item, text);
            break;
        }
        }
    }
}
