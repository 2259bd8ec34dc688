#pragma once

#include <QRect>

class QWidget;

namespace zentoria {

// Geometry is reckoned in twips (1/1440 inch) like the report tools this program comes from; the screen
// counts pixels. These are the only places the two meet.
inline constexpr double kTwipsPerInch = 1440.0;

int twipsToPixels(double twips, double dpi);
double pixelsToTwips(int pixels, double dpi);

// The logical DPI of the screen the widget is on (the primary screen without a widget).
double logicalDpi(const QWidget* widget = nullptr);

// A rectangle given in twips, in pixels for the widget's screen.
QRect twipsRectToPixels(double left, double top, double width, double height, double dpi);

// Places a widget at a rectangle in twips, relative to its parent's client area.
void setGeometryTwips(QWidget* widget, double left, double top, double width, double height);

} // namespace zentoria
