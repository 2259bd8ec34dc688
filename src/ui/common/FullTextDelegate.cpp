#include "FullTextDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
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
    const auto mark = TextMark(index.data(kMarkRole).toInt());
    if (mark != TextMark::None && !(shown.state & QStyle::State_Selected)) {
        // Dimmed, but still to be read: halfway between the text's colour and the background's.
        const QColor text = shown.palette.color(QPalette::Text);
        const QColor base = shown.palette.color(QPalette::Base);
        shown.palette.setColor(QPalette::Text,
                               QColor((text.red() + base.red()) / 2, (text.green() + base.green()) / 2,
                                      (text.blue() + base.blue()) / 2));
    }
    if (mark == TextMark::Gone) {
        shown.font.setStrikeOut(true);
        shown.fontMetrics = QFontMetrics(shown.font);
    }
    QString note = index.data(kNoteRole).toString();
    const QRect textRect = style->subElementRect(QStyle::SE_ItemViewItemText, &shown, widget);
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
    const QFontMetrics& metrics = shown.fontMetrics;
    const int tick = mark == TextMark::Done ? metrics.height() : 0;
    int noteWidth = note.isEmpty() ? 0 : metrics.horizontalAdvance(note) + tick + metrics.height();
    // Where the note would cut into the file's name, a marked item says it by its mark alone (the
    // check mark, the line through it); the words stay in its tooltip and for a screen reader.
    const qsizetype cut = std::max(shown.text.lastIndexOf(u'\\'), shown.text.lastIndexOf(u'/'));
    const int nameNeeds = metrics.horizontalAdvance(QStringLiteral("…") + shown.text.mid(cut));
    if (mark != TextMark::None && noteWidth > 0 && textRect.width() - 2 * margin - noteWidth < nameNeeds) {
        note.clear();
        noteWidth = tick > 0 ? tick + metrics.height() / 2 : 0;
    }
    // A path cut in the middle keeps its file's whole name where there is room for it. Only what is
    // drawn is cut: the size hint, which tells whether the tooltip is needed, measures the whole text.
    if ((shown.textElideMode == Qt::ElideMiddle || noteWidth > 0) && !shown.text.isEmpty()) {
        shown.text = elidePath(shown.text, metrics, std::max(0, textRect.width() - 2 * margin - noteWidth));
    }
    style->drawControl(QStyle::CE_ItemViewItem, &shown, painter, widget);
    if (noteWidth > 0) {
        drawNote(painter, shown, textRect, margin, note, tick);
    }
}

void FullTextDelegate::drawNote(QPainter* painter, const QStyleOptionViewItem& shown, const QRect& textRect,
                                int margin, const QString& note, int tick) const {
    const QFontMetrics& metrics = shown.fontMetrics;
    const bool selected = shown.state & QStyle::State_Selected;
    const QColor colour = shown.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    QFont font = shown.font;
    font.setStrikeOut(false);
    painter->save();
    painter->setClipRect(textRect);
    painter->setPen(colour);
    painter->setFont(font);
    int x = textRect.left() + margin + metrics.horizontalAdvance(shown.text) + metrics.height() / 2;
    if (tick > 0) {
        // Drawn rather than a glyph, which not every font has; as thick as the text is, at any scale.
        const QRectF box(x, textRect.center().y() - tick / 3.0, tick * 0.6, tick * 0.6);
        QPen pen(colour, std::max(1.5, tick / 8.0));
        pen.setCapStyle(Qt::RoundCap);
        painter->setPen(pen);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->drawPolyline(QPolygonF{{box.left(), box.center().y()},
                                        {box.left() + box.width() * 0.4, box.bottom()},
                                        {box.right(), box.top()}});
        painter->setPen(colour);
        x += tick;
    }
    painter->drawText(QRect(x, textRect.top(), textRect.right() - x, textRect.height()),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, note);
    painter->restore();
}

QSize FullTextDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    // The note is part of what the item needs to be seen whole.
    if (const QString note = index.data(kNoteRole).toString(); !note.isEmpty()) {
        const QFontMetrics metrics(option.font);
        size.rwidth() += metrics.horizontalAdvance(note) + 2 * metrics.height();
    }
    return size;
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
