#pragma once

#include "layout/WrappedText.h"

#include <QLabel>

namespace zentoria {

// A label that reads its caption the way the desktop tools of Melvadex's world do: "&" marks an access
// key and "&&" stands for one ampersand. Captions are never markup, so a file name like "<b>x</b>.mp3"
// shows exactly those characters. A wrapping label shows each carriage return or line feed as a line
// break, wraps its lines at its width (within a name too long for a line as well), and draws only the
// lines in view, so a caption of thousands of lines costs little.
class CaptionLabel : public QLabel {
    Q_OBJECT

public:
    explicit CaptionLabel(QWidget* parent = nullptr);

    // The caption as the program set it, access-key marks included.
    QString caption() const { return m_caption; }
    void setCaption(const QString& caption);

    // Sizes itself to its caption: a wrapping label keeps its width and takes the height of the text.
    void setAutoSize(bool on);

    // An opaque label fills its background with the palette's window colour.
    void setOpaque(bool on);
    // Makes the label opaque in the desktop's colours of these roles, such as a tooltip's or a text box's.
    void setOpaqueColours(QPalette::ColorRole background, QPalette::ColorRole text);
    void setSingleBorder(bool on);
    // What the label shows ("File", "Problem"): a screen reader hears it before the caption, and
    // alone while the caption is empty.
    void setAccessibleTitle(const QString& title);

    // What the caption shows on screen: "&&" becomes "&" and a lone "&" (the access-key mark) disappears.
    static QString displayText(const QString& caption);

    // A wrapping label's lines as shown, top to bottom.
    const WrappedText& wrappedText() const { return m_wrapped; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void captionChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitToCaption();
    void wrapToWidth();
    int wrappedHeight(qsizetype rows) const;

    void updateAccessibleName();

    QString m_caption;
    QString m_accessibleTitle;
    bool m_autoSize = false;
    WrappedText m_wrapped;
    int m_wrappedWidth = -1;
};

} // namespace zentoria
