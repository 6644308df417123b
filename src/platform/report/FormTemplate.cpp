#include "platform/report/FormTemplate.h"

#include <QFile>
#include <QRegularExpression>

namespace {

Qt::Alignment alignmentOf(const QString& word, bool* ok) {
    *ok = true;
    if (word == QLatin1String("left"))
        return Qt::AlignLeft;
    if (word == QLatin1String("center"))
        return Qt::AlignHCenter;
    if (word == QLatin1String("right"))
        return Qt::AlignRight;
    *ok = false;
    return Qt::AlignLeft;
}

bool readNumbers(const QStringList& words, int from, int count, QList<double>& numbers) {
    for (int i = from; i < from + count; ++i) {
        bool ok = false;
        numbers << words.value(i).toDouble(&ok);
        if (!ok)
            return false;
    }
    return true;
}

// A field or fixed text: <x> <y> <w> <h> <pt> <align> <h|v> from the given word on.
bool readTextItem(const QStringList& words, int from, FormItem& item) {
    QList<double> n;
    bool alignOk = false;
    if (!readNumbers(words, from, 5, n))
        return false;
    item.x = n[0], item.y = n[1], item.w = n[2], item.h = n[3], item.points = n[4];
    item.align = alignmentOf(words.value(from + 5), &alignOk);
    const QString direction = words.value(from + 6);
    item.vertical = direction == QLatin1String("v");
    return alignOk && (item.vertical || direction == QLatin1String("h"));
}

// The words after a field's or a box's fixed ones: key=value options and flags.
bool readOptions(const QStringList& words, int from, FormItem& item) {
    for (int i = from; i < words.size(); ++i) {
        const QString& word = words[i];
        const QString value = word.section(QLatin1Char('='), 1);
        bool ok = true;
        if (word.startsWith(QLatin1String("min=")))
            item.minPoints = value.toDouble(&ok);
        else if (word.startsWith(QLatin1String("join=")))
            item.join = value;
        else if (word.startsWith(QLatin1String("colour=")))
            item.colour = value;
        else if (word.startsWith(QLatin1String("when=")))
            item.when = value;
        else if (word == QLatin1String("nobreak"))
            item.noBreak = true;
        else if (word == QLatin1String("top"))
            item.top = true;
        else if (word == QLatin1String("plain"))
            item.plainPaperOnly = true;
        else
            ok = false;
        if (!ok)
            return false;
    }
    return true;
}

} // namespace

QStringList FormTemplate::fieldNames() const {
    QStringList names;
    for (const FormItem& item : items)
        if (item.kind == FormItem::Kind::Field)
            names << item.name;
    return names;
}

bool LoadFormTemplate(const QString& path, FormTemplate& form, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *error = QStringLiteral("帳票ファイルがありません: ") + path;
        return false;
    }
    form = FormTemplate();
    static const QRegularExpression blanks(QStringLiteral("[ \\t]+"));
    int lineNo = 0;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        ++lineNo;
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList words = line.split(blanks);
        const QString kind = words.first();
        FormItem item;
        QList<double> n;
        bool ok = false;
        if (kind == QLatin1String("page")) {
            ok = readNumbers(words, 1, 2, n);
            if (ok)
                form.pageMm = QSizeF(n[0], n[1]);
        } else if (kind == QLatin1String("field")) {
            item.kind = FormItem::Kind::Field;
            item.name = words.value(1);
            ok =
                !item.name.isEmpty() && readTextItem(words, 2, item) && readOptions(words, 9, item);
        } else if (kind == QLatin1String("text")) {
            item.kind = FormItem::Kind::Text;
            ok = readTextItem(words, 1, item) && words.size() > 8;
            item.name = words.mid(8).join(QLatin1Char(' '));
        } else if (kind == QLatin1String("image")) {
            item.kind = FormItem::Kind::Image;
            item.name = words.value(1);
            ok = !item.name.isEmpty() && words.size() == 6 && readNumbers(words, 2, 4, n);
            if (ok)
                item.x = n[0], item.y = n[1], item.w = n[2], item.h = n[3];
        } else if (kind == QLatin1String("line") || kind == QLatin1String("box")) {
            item.kind = kind == QLatin1String("line") ? FormItem::Kind::Line : FormItem::Kind::Box;
            ok = readNumbers(words, 1, 4, n);
            if (ok) {
                item.x = n[0], item.y = n[1], item.w = n[2], item.h = n[3];
                int options = 5;
                if (words.size() > 5 && !words[5].contains(QLatin1Char('=')) &&
                    words[5] != QLatin1String("plain"))
                    item.pen = words[options++].toDouble(&ok);
                ok = ok && readOptions(words, options, item);
            }
        }
        if (!ok) {
            *error = QStringLiteral("帳票ファイルの %1 行目が読めません: %2").arg(lineNo).arg(path);
            return false;
        }
        if (kind != QLatin1String("page"))
            form.items << item;
    }
    return true;
}
