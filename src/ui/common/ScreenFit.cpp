#include "ScreenFit.h"

#include "Twips.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScreen>
#include <QThread>
#include <QWidget>
#include <QWindow>

namespace zentoria {

QRect fitToArea(const QRect& rect, const QRect& area) {
    const QSize size = rect.size().boundedTo(area.size());
    const int left = qBound(area.left(), rect.left(), area.left() + area.width() - size.width());
    const int top = qBound(area.top(), rect.top(), area.top() + area.height() - size.height());
    return {QPoint(left, top), size};
}

QScreen* screenFor(const QRect& rect) {
    if (QScreen* holding = QGuiApplication::screenAt(rect.center())) {
        return holding;
    }
    QScreen* best = QGuiApplication::primaryScreen();
    qint64 bestOverlap = 0;
    for (QScreen* screen : QGuiApplication::screens()) {
        const QRect overlap = screen->geometry().intersected(rect);
        const qint64 area = qint64(overlap.width()) * overlap.height();
        if (area > bestOverlap) {
            best = screen;
            bestOverlap = area;
        }
    }
    return best;
}

QRect twipsRectOnScreen(double left, double top, double width, double height) {
    QRect pixels = twipsRectToPixels(left, top, width, height, logicalDpi());
    const QScreen* screen = screenFor(pixels);
    if (!screen) {
        return pixels;
    }
    pixels = twipsRectToPixels(left, top, width, height, screen->logicalDotsPerInchX());
    return fitToArea(pixels, screen->availableGeometry());
}

void fitToScreen(QWidget* window) {
    const QScreen* screen = window->screen();
    if (!screen) {
        return;
    }
    const QRect frame = window->frameGeometry();
    const QRect fitted = fitToArea(frame, screen->availableGeometry());
    if (fitted == frame) {
        return;
    }
    window->resize(window->size() - (frame.size() - fitted.size()));
    window->move(fitted.topLeft());
}

void showFitted(QWidget* window, const QRect& outer) {
    window->move(outer.topLeft());
    window->resize(outer.size());
    window->show();
    QWindow* handle = window->windowHandle();
    QElapsedTimer waited;
    waited.start();
    while (handle && !handle->isExposed() && waited.elapsed() < 1000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    const QMargins frame = frameMarginsOf(window);
    if (!frame.isNull()) {
        window->resize(outer.size().shrunkBy(frame));
        window->move(outer.topLeft());
    }
    fitToScreen(window);
}

double widestScreenTwips() {
    double widest = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        widest =
            qMax(widest, pixelsToTwips(screen->availableGeometry().width(), screen->logicalDotsPerInchX()));
    }
    return widest;
}

} // namespace zentoria
