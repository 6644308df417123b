#include "support/Papers.h"

#include <QProcess>

QString FirstCutOff(const ReportJobRecord& job) {
    const auto inside = [](const QRectF& outer, const QRectF& r) {
        return outer.contains(r.adjusted(1e-3, 1e-3, -1e-3, -1e-3));
    };
    for (qsizetype p = 0; p < job.drawn.size(); ++p)
        for (const DrawnText& run : job.drawn[p])
            if (!run.field.isEmpty() && (!inside(job.fieldBoxes.value(run.field), run.box) ||
                                         !inside(QRectF(QPointF(), job.pageSizes[p]), run.box)))
                return QStringLiteral("page %1 %2 %3").arg(p).arg(run.field, run.text);
    return {};
}

QString PdfText(const QString& path, bool layout) {
    QProcess extract;
    QStringList arguments{path, QStringLiteral("-")};
    if (layout)
        arguments.prepend(QStringLiteral("-layout"));
    extract.start(QStringLiteral("pdftotext"), arguments);
    extract.waitForFinished(30000);
    return QString::fromUtf8(extract.readAllStandardOutput());
}
