#include "FullTextDelegate.h"

#include <QAbstractItemView>
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
