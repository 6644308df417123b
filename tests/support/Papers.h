#pragma once

#include "platform/report/Report.h"

#include <QString>

// What a printed document shows, read back.

// The first text drawn outside its field's box or off its page ("page 0 Name 山田"), empty
// when every text of every page lies whole inside both: nothing is cut.
QString FirstCutOff(const ReportJobRecord& job);

// The PDF's text as pdftotext reads it, pages ending in a form feed; `layout` keeps the
// columns of a line apart as they stand on the page.
QString PdfText(const QString& path, bool layout = false);
