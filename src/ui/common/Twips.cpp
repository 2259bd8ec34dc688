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

QMargins frameMarginsOf(const QWidget* window) {
    const QRect frame = window->frameGeometry();
    const QRect inside = window->geometry();
    return {inside.left() - frame.left(), inside.top() - frame.top(), frame.right() - inside.right(),
            frame.bottom() - inside.bottom()};
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

namespace {

void setPartTwips(QWidget* widget, double TwipsRect::*part, double value) {
    TwipsRect rect = geometryTwips(widget);
    rect.*part = value;
    setGeometryTwips(widget, rect);
}

} // namespace

void setLeftTwips(QWidget* widget, double left) {
    setPartTwips(widget, &TwipsRect::Left, left);
}

void setTopTwips(QWidget* widget, double top) {
    setPartTwips(widget, &TwipsRect::Top, top);
}

void setWidthTwips(QWidget* widget, double width) {
    setPartTwips(widget, &TwipsRect::Width, width);
}

void setHeightTwips(QWidget* widget, double height) {
    setPartTwips(widget, &TwipsRect::Height, height);
}

} // namespace zentoria
