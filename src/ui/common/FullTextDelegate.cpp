#include "FullTextDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QScrollBar>
#include <QTextDocument>
#include <QToolTip>

namespace zentoria {

void FullTextDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    QStyleOptionViewItem shown(option);
    if (const auto* view = qobject_cast<const QAbstractItemView*>(option.widget)) {
        // What the view can scroll into sight, from its left end to its right: a text cut to it moves
        // with the header when the view scrolls sideways, and ends in sight at the far end.
        const QScrollBar* sideways = view->horizontalScrollBar();
        const QRect reach(-sideways->value(), option.rect.top(),
                          view->viewport()->width() + sideways->maximum(), option.rect.height());
        shown.rect = option.rect.intersected(reach);
    }
    if (shown.rect.isEmpty()) {
        shown.rect = option.rect;
    }
    initStyleOption(&shown, index);
    const QWidget* widget = option.widget;
    QStyle* style = widget ? widget->style() : QApplication::style();
    // A path cut in the middle keeps its file's whole name where there is room for it. Only what is
    // drawn is cut: the size hint, which tells whether the tooltip is needed, measures the whole text.
    if (shown.textElideMode == Qt::ElideMiddle && !shown.text.isEmpty()) {
        const QRect text = style->subElementRect(QStyle::SE_ItemViewItemText, &shown, widget);
        const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
        shown.text = elidePath(shown.text, shown.fontMetrics, text.width() - 2 * margin);
    }
    style->drawControl(QStyle::CE_ItemViewItem, &shown, painter, widget);
}

int FullTextDelegate::readableWidth(const QStyleOptionViewItem& option, const QModelIndex& index,
                                    const QString& text) const {
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QWidget* widget = option.widget;
    QStyle* style = widget ? widget->style() : QApplication::style();
    const int room = style->subElementRect(QStyle::SE_ItemViewItemText, &item, widget).width();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
    const qsizetype cut = std::max(text.lastIndexOf(u'\\'), text.lastIndexOf(u'/'));
    const QString shortest = cut > 0 ? QStringLiteral("C:…") + text.mid(cut) : text;
    return item.rect.width() - room + 2 * margin + item.fontMetrics.horizontalAdvance(shortest);
}

QString elidePath(const QString& path, const QFontMetrics& metrics, int width) {
    if (metrics.horizontalAdvance(path) <= width) {
        return path;
    }
    const qsizetype cut = std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/'));
    const QString name = path.mid(cut);
    const int folderRoom = width - metrics.horizontalAdvance(name);
    if (cut <= 0 || folderRoom < metrics.horizontalAdvance(QStringLiteral("C:…"))) {
        return metrics.elidedText(path, Qt::ElideMiddle, width);
    }
    return metrics.elidedText(path.left(cut), Qt::ElideRight, folderRoom) + name;
}

bool FullTextDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() == QEvent::ToolTip && index.isValid()) {
        const QRect shown = option.rect.intersected(view->viewport()->rect());
        if (sizeHint(option, index).width() > shown.width()) {
            QToolTip::showText(event->globalPos(), plainToolTip(index.data().toString()), view->viewport(),
                               shown);
            return true;
        }
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

QString plainToolTip(const QString& text) {
    if (!Qt::mightBeRichText(text)) {
        return text;
    }
    return QStringLiteral("<p style='white-space:pre'>") + text.toHtmlEscaped() + QStringLiteral("</p>");
}

} // namespace zentoria
