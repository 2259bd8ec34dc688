#include "Twips.h"

#include <QGuiApplication>
#include <QRectF>
#include <QScreen>
#include <QVariant>
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

namespace {

constexpr char kTwipsProperty[] = "zentoriaTwips";
constexpr char kPixelsProperty[] = "zentoriaTwipsPixels";

} // namespace

void setGeometryTwips(QWidget* widget, double left, double top, double width, double height) {
    const QRect pixels = twipsRectToPixels(left, top, width, height, logicalDpi(widget));
    widget->setGeometry(pixels);
    widget->setProperty(kTwipsProperty, QRectF(left, top, width, height));
    widget->setProperty(kPixelsProperty, widget->geometry());
}

void setGeometryTwips(QWidget* widget, const TwipsRect& rect) {
    setGeometryTwips(widget, rect.Left, rect.Top, rect.Width, rect.Height);
}

TwipsRect geometryTwips(const QWidget* widget) {
    if (widget->property(kPixelsProperty).toRect() == widget->geometry()) {
        const QRectF twips = widget->property(kTwipsProperty).toRectF();
        return {twips.x(), twips.y(), twips.width(), twips.height()};
    }
    const double dpi = logicalDpi(widget);
    const QRect pixels = widget->geometry();
    return {pixelsToTwips(pixels.x(), dpi), pixelsToTwips(pixels.y(), dpi),
            pixelsToTwips(pixels.width(), dpi), pixelsToTwips(pixels.height(), dpi)};
}

void setLeftTwips(QWidget* widget, double left) {
    TwipsRect rect = geometryTwips(widget);
    rect.Left = left;
    setGeometryTwips(widget, rect);
}

void setTopTwips(QWidget* widget, double top) {
    TwipsRect rect = geometryTwips(widget);
    rect.Top = top;
    setGeometryTwips(widget, rect);
}

void setWidthTwips(QWidget* widget, double width) {
    TwipsRect rect = geometryTwips(widget);
    rect.Width = width;
    setGeometryTwips(widget, rect);
}

void setHeightTwips(QWidget* widget, double height) {
    TwipsRect rect = geometryTwips(widget);
    rect.Height = height;
    setGeometryTwips(widget, rect);
}

} // namespace zentoria
