#include "Twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <cmath>

namespace zentoria {

int twipsToPixels(double twips, double dpi) {
    return static_cast<int>(std::lround(twips * dpi / kTwipsPerInch));
}

double pixelsToTwips(int pixels, double dpi) {
    return pixels * kTwipsPerInch / dpi;
}

double logicalDpi(const QWidget* widget) {
    const QScreen* screen = widget ? widget->screen() : QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInchX() : 96.0;
}

QRect twipsRectToPixels(double left, double top, double width, double height, double dpi) {
    return {twipsToPixels(left, dpi), twipsToPixels(top, dpi), twipsToPixels(width, dpi),
            twipsToPixels(height, dpi)};
}

void setGeometryTwips(QWidget* widget, double left, double top, double width, double height) {
    widget->setGeometry(twipsRectToPixels(left, top, width, height, logicalDpi(widget)));
}

} // namespace zentoria
