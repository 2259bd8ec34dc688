#pragma once

#include <QStyledItemDelegate>

namespace zentoria {

// How an item's text is marked: a file whose state was followed since the report was opened.
enum class TextMark { None, Done, Gone };
// The roles for it: a short note drawn after the text, and the mark (a TextMark as int). A done item
// gets a check mark before its note, and its text dimmed; a gone one is dimmed and struck through.
inline constexpr int kNoteRole = Qt::UserRole + 8;
inline constexpr int kMarkRole = Qt::UserRole + 9;

// Draws items as usual, but within the part of the view that its scroll bar can bring into sight: a
// text that reaches past it is shortened as the view shortens texts (in the middle, say) to that part,
// not to its column; a note (kNoteRole) after it takes its room first. An
// item whose text the view shows only in part shows its whole text as a tooltip. Other items show
// their tooltip data, if any.
class FullTextDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    // The least width an item of this text needs for its shortened form to keep the file's name whole.
    int readableWidth(const QStyleOptionViewItem& option, const QModelIndex& index,
                      const QString& text) const;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    // The note after the text as drawn, with a check mark `tick` wide before it when tick > 0.
    void drawNote(QPainter* painter, const QStyleOptionViewItem& shown, const QRect& textRect, int margin,
                  const QString& note, int tick) const;
};

// The path shortened to the width, in the middle: its folders give way first ("C:\Music\Qu…\01 -
// Song.mp3"), so that the file's name stays whole; when not even that fits, the whole path is cut in its
// middle.
QString elidePath(const QString& path, const QFontMetrics& metrics, int width);

// A tooltip text that shows as the plain text it is: Qt shows anything that looks like markup as
// markup, and a file name is data.
QString plainToolTip(const QString& text);

} // namespace zentoria
