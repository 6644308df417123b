#include "platform/report/Typesetting.h"

#include "platform/report/FormPainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QRegularExpression>
#include <algorithm>
#include <optional>

namespace {

constexpr double LinePitch = 1.25; // lines and columns, in ems of the text's size
constexpr double Epsilon = 1e-6;

// Where a line may break before a piece; a higher level is a better place.
enum Level { Never = 0, Anywhere = 1, AtNumber = 2, AtBlank = 3, Unbroken = 4 };

struct Cell {
    QString text;
    double length = 1; // along the line, in ems
    bool turned = false, raised = false, stop = false;
};

// What a line never breaks inside: a number with its unit, a run of letters, or one character.
struct Piece {
    QList<Cell> cells;
    double length = 0;
    bool blank = false, number = false;
    bool noBreakBefore = false, noBreakAfter = false;
    int segment = 0; // which tab stop it follows
};

struct Line {
    QList<Piece> pieces;
};

double advanceEms(const QString& text) {
    static QHash<QString, double> cache;
    const auto it = cache.constFind(text);
    if (it != cache.constEnd())
        return *it;
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPixelSize(1000);
    font.setHintingPreference(QFont::PreferNoHinting);
    const double ems = QFontMetricsF(font).horizontalAdvance(text) / 1000.0;
    cache.insert(text, ems);
    return ems;
}

bool isDigit(QChar c) {
    return (c >= u'0' && c <= u'9') || (c >= u'０' && c <= u'９');
}

bool isSmallKana(QChar c) {
    static const QString small = QStringLiteral(
        "ぁぃぅぇぉっゃゅょゎゕゖァィゥェォッャュョヮヵヶㇰㇱㇲㇳㇴㇵㇶㇷㇸㇹㇺㇻㇼㇽㇾㇿ");
    return small.contains(c);
}

bool isStop(QChar c) {
    return QStringLiteral("、。，．").contains(c);
}

bool isHyphen(QChar c) {
    return QStringLiteral("-－‐−―").contains(c);
}

bool mayNotStartLine(QChar c) {
    return isSmallKana(c) || isStop(c) ||
           QStringLiteral("ー）」』】〕］｝〉》)]}・：；！？!?,.").contains(c);
}

bool mayNotEndLine(QChar c) {
    return QStringLiteral("（「『【〔［｛〈《([{").contains(c);
}

Cell verticalCell(QChar c) {
    Cell cell{QString(c)};
    if (c == u' ')
        cell.length = 0.5;
    if (isHyphen(c))
        cell.text = QStringLiteral("－");
    cell.turned = TurnedInVerticalText(c) || isHyphen(c);
    cell.raised = isSmallKana(c) || isStop(c);
    cell.stop = isStop(c);
    return cell;
}

QList<Cell> cellsOf(const QString& text, bool vertical, VerticalDigits digits) {
    QList<Cell> cells;
    if (!vertical) {
        for (QChar c : text)
            cells << Cell{QString(c), advanceEms(QString(c))};
        return cells;
    }
    for (int i = 0; i < text.size();) {
        int end = i;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        if (end > i) {
            for (QChar c : VerticalNumber(text.mid(i, end - i), digits))
                cells << Cell{QString(c)};
            i = end;
            continue;
        }
        const QChar c = text[i++];
        cells << verticalCell(c);
    }
    return cells;
}

Piece pieceOf(const QString& text, bool vertical, VerticalDigits digits) {
    Piece piece;
    piece.cells = cellsOf(text, vertical, digits);
    for (const Cell& cell : piece.cells)
        piece.length += cell.length;
    piece.blank = text == u" " || text == u"　";
    piece.noBreakBefore = mayNotStartLine(text.front());
    piece.noBreakAfter = mayNotEndLine(text.back());
    return piece;
}

// A letter run turned with the column, one cell as long as the run is wide.
Piece turnedRun(const QString& text) {
    Piece piece;
    Cell cell{text, advanceEms(text), true};
    piece.cells << cell;
    piece.length = cell.length;
    return piece;
}

QList<Piece> piecesOf(const QString& text, bool vertical, VerticalDigits digits) {
    static const QRegularExpression words(
        QStringLiteral("[0-9０-９]+(?:[-－‐−―][0-9０-９]+)*(?:丁目|番地|番|号室|号|条|階|[FＦ])?"
                       "|[一二三四五六七八九十〇百千]+(?:丁目|番地|番|号室|号|条|線)"
                       "|[A-Za-z][A-Za-z.&'/]*"));
    QList<Piece> pieces;
    int at = 0;
    const auto single = [&](int end) {
        for (; at < end; ++at)
            pieces << pieceOf(text.mid(at, 1), vertical, digits);
    };
    for (auto it = words.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        single(int(match.capturedStart()));
        const QString word = match.captured();
        const bool letters = word.front().isLetter() && word.front().unicode() < 128;
        if (letters && vertical) {
            pieces << turnedRun(word);
        } else if (letters) {
            pieces << pieceOf(word, vertical, digits);
        } else {
            pieces << pieceOf(word, vertical, digits);
            pieces.last().number = true;
        }
        at = int(match.capturedEnd());
    }
    single(int(text.size()));
    return pieces;
}

Level breakBefore(const QList<Piece>& pieces, qsizetype i) {
    const Piece& before = pieces[i - 1];
    const Piece& after = pieces[i];
    if (before.blank || after.blank)
        return AtBlank;
    if (after.noBreakBefore || before.noBreakAfter)
        return Never;
    // Where a number starts or ends: after the town, between 丁目 and the house number.
    if (before.number || after.number)
        return AtNumber;
    return Anywhere;
}

// Greedy lines of at most `room` ems, breaking only at places of the level or better.
bool breakLines(const QList<Piece>& pieces, double room, Level level, QList<Line>& lines) {
    qsizetype start = 0;
    while (start < pieces.size()) {
        while (start < pieces.size() && pieces[start].blank)
            ++start;
        if (start == pieces.size())
            break;
        double length = 0;
        qsizetype end = -1;
        for (qsizetype j = start; j < pieces.size(); ++j) {
            length += pieces[j].length;
            if (length > room + Epsilon)
                break;
            if (j + 1 == pieces.size() || (level < Unbroken && breakBefore(pieces, j + 1) >= level))
                end = j + 1;
        }
        if (end < 0)
            return false;
        Line line;
        line.pieces = pieces.mid(start, end - start);
        while (!line.pieces.isEmpty() && line.pieces.last().blank)
            line.pieces.removeLast();
        lines << line;
        start = end;
    }
    return true;
}

// Where each piece of each line starts along it, in ems, with the tab stops aligned.
QList<QList<double>> positionsOf(const QList<Line>& lines, double* longest) {
    int segments = 0;
    for (const Line& line : lines)
        for (const Piece& piece : line.pieces)
            segments = std::max(segments, piece.segment + 1);
    QList<double> stops(segments, 0.0);
    for (int s = 1; s < segments; ++s)
        for (const Line& line : lines) {
            double end = stops[s - 1];
            for (const Piece& piece : line.pieces)
                if (piece.segment == s - 1)
                    end += piece.length;
            stops[s] = std::max(stops[s], end);
        }
    QList<QList<double>> positions;
    *longest = 0;
    for (const Line& line : lines) {
        QList<double> at;
        int segment = -1;
        double pos = 0;
        for (const Piece& piece : line.pieces) {
            if (piece.segment != segment)
                pos = stops[segment = piece.segment];
            at << pos;
            pos += piece.length;
        }
        positions << at;
        *longest = std::max(*longest, pos);
    }
    return positions;
}

struct Attempt {
    QList<Line> lines;
    QList<QList<double>> positions;
    double longest = 0;
};

// The text's lines at a size, or nothing when they do not fit the box.
std::optional<Attempt> fit(const FormItem& item, const QList<QList<Piece>>& paragraphs,
                           double points, Level level) {
    const double em = EmMm(points);
    const double along = item.vertical ? item.h : item.w;
    const double across = item.vertical ? item.w : item.h;
    Attempt attempt;
    for (const QList<Piece>& paragraph : paragraphs)
        if (!breakLines(paragraph, along / em, level, attempt.lines))
            return std::nullopt;
    if (attempt.lines.isEmpty())
        return std::nullopt;
    attempt.positions = positionsOf(attempt.lines, &attempt.longest);
    const double block = (attempt.lines.size() - 1) * LinePitch * em + em;
    if (attempt.longest * em > along + Epsilon || block > across + Epsilon)
        return std::nullopt;
    return attempt;
}

QList<double> sizesFrom(double top, double bottom, double step) {
    QList<double> sizes;
    for (double size = top; size > bottom + Epsilon; size -= step)
        sizes << size;
    sizes << bottom;
    return sizes;
}

SetText place(const FormItem& item, const Attempt& attempt, double points) {
    const double em = EmMm(points);
    const double pitch = LinePitch * em;
    const double block = (attempt.lines.size() - 1) * pitch + em;
    const bool centred = item.align & Qt::AlignHCenter;
    const bool tabbed =
        std::any_of(attempt.lines.cbegin(), attempt.lines.cend(), [](const Line& l) {
            return !l.pieces.isEmpty() && l.pieces.last().segment > 0;
        });
    SetText set{points, {}};
    for (qsizetype n = 0; n < attempt.lines.size(); ++n) {
        const Line& line = attempt.lines[n];
        const double lineLength =
            line.pieces.isEmpty() ? 0 : attempt.positions[n].last() + line.pieces.last().length;
        const double length = (tabbed ? attempt.longest : lineLength) * em;
        double origin = 0; // where the line starts along
        double side = 0;   // where it stands across
        if (item.vertical) {
            const double right =
                centred ? item.x + (item.w + block) / 2
                        : ((item.align & Qt::AlignLeft) ? item.x + block : item.x + item.w);
            side = right - em - n * pitch;
            origin = centred ? item.y + (item.h - attempt.longest * em) / 2 : item.y;
        } else {
            side = item.top ? item.y + n * pitch : item.y + (item.h - block) / 2 + n * pitch;
            origin = centred ? item.x + (item.w - length) / 2
                             : ((item.align & Qt::AlignRight) ? item.x + item.w - length : item.x);
        }
        for (qsizetype p = 0; p < line.pieces.size(); ++p) {
            double along = attempt.positions[n][p];
            for (const Cell& cell : line.pieces[p].cells) {
                const double start = origin + along * em, extent = cell.length * em;
                const QRectF box = item.vertical ? QRectF(side, start, em, extent)
                                                 : QRectF(start, side, extent, em);
                set.glyphs << SetGlyph{cell.text, box, cell.turned, cell.raised, cell.stop};
                along += cell.length;
            }
        }
    }
    return set;
}

} // namespace

QString VerticalNumber(const QString& digits, VerticalDigits style) {
    static const QString kanji = QStringLiteral("〇一二三四五六七八九");
    QString out;
    QList<int> values;
    for (QChar c : digits)
        values << (c >= u'０' ? c.unicode() - u'０' : c.unicode() - u'0');
    if (style == VerticalDigits::FullWidth) {
        for (int v : values)
            out += QChar(u'０' + v);
        return out;
    }
    if (values.size() == 2 && values[0] == 1)
        return QStringLiteral("十") + (values[1] ? QString(kanji[values[1]]) : QString());
    for (int v : values)
        out += kanji[v];
    return out;
}

SetText SetFieldText(const FormItem& item, const QString& text, VerticalDigits digits) {
    QList<QList<Piece>> paragraphs;
    bool tabbed = text.contains(u'\t');
    for (const QString& line : text.split(u'\n')) {
        QList<Piece> pieces;
        const QStringList segments = line.split(u'\t');
        for (int s = 0; s < segments.size(); ++s)
            for (Piece& piece : piecesOf(segments[s], item.vertical, digits)) {
                piece.segment = s;
                pieces << piece;
            }
        paragraphs << pieces;
    }
    if (text.trimmed().isEmpty())
        return {};
    const double floor = std::min(item.minPoints, item.points);
    QList<Level> levels{Unbroken};
    if (!item.noBreak && !tabbed)
        levels << AtBlank << AtNumber << Anywhere;
    for (Level level : levels)
        for (double points : sizesFrom(item.points, floor, 0.5))
            if (const auto attempt = fit(item, paragraphs, points, level))
                return place(item, *attempt, points);
    // Nothing fits at the floor: smaller still rather than lose a character.
    for (double points : sizesFrom(floor, 2, 0.25))
        if (const auto attempt = fit(item, paragraphs, points, levels.last()))
            return place(item, *attempt, points);
    Attempt last;
    for (const QList<Piece>& paragraph : paragraphs)
        breakLines(paragraph, 1e9, Unbroken, last.lines);
    last.positions = positionsOf(last.lines, &last.longest);
    return place(item, last, 2);
}
