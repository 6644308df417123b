#pragma once

#include <QRectF>

class QChart;
class QPainter;
struct ViewData;

// The chart of a view of the sales analysis (Qt Charts). On the screen its series are in
// colours; on paper in grey levels that stay apart in black and white, the values written on
// the bars and slices either way. Texts are in the program's Japanese font, amounts grouped in
// thousands.
enum class ChartMedium { Screen, Paper };

// A new chart of the view's figures; the caller owns it.
QChart* NewChart(const ViewData& data, ChartMedium medium);

// Draws the paper chart of the view into a box of a printed page, at the device's resolution.
void DrawChart(const ViewData& data, QPainter& painter, const QRectF& box);
