#include "platform/report/FormPainter.h"

#include <QFont>
#include <QPainter>

namespace {

// Noto CJK's ideographic em box: the baseline lies this far down from the top of the em.
constexpr double Baseline = 0.88;

QFont formFont(double points) {
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPointSizeF(points);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QRectF scaled(double k, const QRectF& mm) {
    return QRectF(mm.x() * k, mm.y() * k, mm.width() * k, mm.height() * k);
}

// One cell: upright glyphs stand on the em's baseline, centred across; turned ones are drawn
// the same way a quarter round about the cell's centre; small kana and commas move up and right.
void drawGlyph(QPainter& painter, double k, double points, const SetGlyph& glyph, bool vertical) {
    const double em = EmMm(points) * k;
    const QRectF cell = scaled(k, glyph.box);
    const double width = painter.fontMetrics().horizontalAdvance(glyph.text);
    painter.save();
    painter.translate(cell.center());
    if (glyph.turned)
        painter.rotate(90);
    if (glyph.raised && vertical)
        painter.translate(glyph.stop ? QPointF(0.55 * em, -0.55 * em)
                                     : QPointF(0.1 * em, -0.18 * em));
    painter.drawText(QPointF(-width / 2, -em / 2 + Baseline * em), glyph.text);
    painter.restore();
}

} // namespace

bool TurnedInVerticalText(QChar c) {
    static const QString turned =
        QStringLiteral("ー－―—‐-~〜～…‥()（）「」『』【】〔〕［］｛｝〈〉《》<>[]{}＝=");
    return turned.contains(c);
}

QString FieldText(const FormItem& item, const QHash<QString, QString>& values) {
    if (item.kind == FormItem::Kind::Text)
        return item.name;
    QString text = values.value(item.name);
    const QString joined = item.join.isEmpty() ? QString() : values.value(item.join);
    if (!joined.isEmpty())
        text += (text.isEmpty() ? QString() : QStringLiteral("  ")) + joined;
    return text;
}

QList<DrawnText> DrawForm(QPainter& painter, double k, const FormTemplate& form,
                          const QHash<QString, QString>& values, const FormOptions& options,
                          const QHash<QString, FormPicture>& pictures) {
    QList<DrawnText> drawn;
    for (const FormItem& item : form.items) {
        if (!item.when.isEmpty() && values.value(item.when).isEmpty())
            continue;
        switch (item.kind) {
        case FormItem::Kind::Line:
            painter.setPen(QPen(QColor(item.colour), item.pen * k));
            painter.drawLine(QPointF(item.x * k, item.y * k), QPointF(item.w * k, item.h * k));
            break;
        case FormItem::Kind::Box:
            if (item.plainPaperOnly && !options.plainPaper)
                break;
            painter.setPen(QPen(QColor(item.colour), item.pen * k));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(scaled(k, QRectF(item.x, item.y, item.w, item.h)));
            break;
        case FormItem::Kind::Image: {
            const auto picture = pictures.constFind(item.name);
            if (picture == pictures.constEnd() || !picture->draw)
                break;
            const QRectF box(item.x, item.y, item.w, item.h);
            painter.save();
            painter.setClipRect(scaled(k, box), Qt::IntersectClip);
            picture->draw(painter, scaled(k, box));
            painter.restore();
            drawn << DrawnText{item.name, picture->text, box};
            break;
        }
        case FormItem::Kind::Text:
        case FormItem::Kind::Field: {
            const SetText set = SetFieldText(item, FieldText(item, values), options.digits);
            if (set.glyphs.isEmpty())
                break;
            painter.setPen(Qt::black);
            painter.setFont(formFont(set.points));
            const QString field = item.kind == FormItem::Kind::Field ? item.name : QString();
            for (const SetGlyph& glyph : set.glyphs) {
                drawGlyph(painter, k, set.points, glyph, item.vertical);
                drawn << DrawnText{field, glyph.text, glyph.box, set.points, glyph.turned};
            }
            break;
        }
        }
    }
    return drawn;
}
