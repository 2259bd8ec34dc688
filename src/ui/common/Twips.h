#pragma once

#include "layout/TwipsRect.h"

#include <QMargins>
#include <QRect>

class QWidget;

namespace zentoria {

// The screen counts pixels, the layout twips. These are the only places the two meet.

int twipsToPixels(double twips, double dpi);
double pixelsToTwips(int pixels, double dpi);

// The logical DPI of the screen the widget is on (the primary screen without a widget).
double logicalDpi(const QWidget* widget = nullptr);

// The frame a top-level window's frame adds around its inside, in pixels.
QMargins frameMarginsOf(const QWidget* window);

// A rectangle given in twips, in pixels for the widget's screen.
QRect twipsRectToPixels(double left, double top, double width, double height, double dpi);

// Places a widget at a rectangle in twips, relative to its parent's client area. The widget remembers
// the twips it was given, so that reading them back gives the same numbers rather than the pixels'
// rounding of them, as long as nothing else has moved or sized it since.
void setGeometryTwips(QWidget* widget, double left, double top, double width, double height);
void setGeometryTwips(QWidget* widget, const TwipsRect& rect);
TwipsRect geometryTwips(const QWidget* widget);
void setLeftTwips(QWidget* widget, double left);
void setTopTwips(QWidget* widget, double top);
void setWidthTwips(QWidget* widget, double width);
void setHeightTwips(QWidget* widget, double height);

} // namespace zentoria
