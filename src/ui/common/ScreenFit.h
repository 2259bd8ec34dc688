#pragma once

#include <QRect>

class QScreen;
class QWidget;

namespace zentoria {

// The rectangle moved, and shrunk where it is larger, so that it lies inside the area.
QRect fitToArea(const QRect& rect, const QRect& area);

// The screen a window at this rectangle opens on: the one that holds its centre, else the one it
// overlaps most, else the primary screen. Null only without any screen.
QScreen* screenFor(const QRect& rect);

// A window's outer rectangle given in twips, in pixels of the screen it opens on (at that screen's
// logical DPI) and fitted to that screen's available area.
QRect twipsRectOnScreen(double left, double top, double width, double height);

// Moves and, where it must, shrinks a shown window so that all of it, frame included, lies in the
// available area of its screen (a window cannot shrink below its minimum size).
void fitToScreen(QWidget* window);

// Shows a top-level window with its outer rectangle (frame included) at the given one: it shows the
// window there, waits (a second at most) until the window system has mapped it and its frame is known,
// then gives the inside up to what the frame takes and places the frame, and fits the whole to its
// screen.
void showFitted(QWidget* window, const QRect& outer);

// The width of the widest screen's available area, in twips: no window is wider.
double widestScreenTwips();

} // namespace zentoria
