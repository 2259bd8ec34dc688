#include "FullTextDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

namespace zentoria {

void FullTextDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    QStyleOptionViewItem shown(option);
    if (const auto* view = qobject_cast<const QAbstractItemView*>(option.widget)) {
        shown.rect = option.rect.intersected(view->viewport()->rect());
    }
    QStyledItemDelegate::paint(painter, shown.rect.isEmpty() ? option : shown, index);
}

void FullTextDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->textElideMode != Qt::ElideMiddle || option->text.isEmpty()) {
        return;
    }
    // The room the style gives the text: the item less its margins and decoration.
    const QWidget* widget = option->widget;
    const QStyle* style = widget ? widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
    int width = option->rect.width() - 2 * margin;
    if (option->features.testFlag(QStyleOptionViewItem::HasDecoration)) {
        width -= option->decorationSize.width() + 2 * margin;
    }
    option->text = elidePath(option->text, option->fontMetrics, width);
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
