#pragma once

#include <QLabel>

namespace zentoria {

// A label that reads its caption the way the desktop tools of Melvadex's world do: "&" marks an access
// key and "&&" stands for one ampersand. Captions are never markup, so a file name like "<b>x</b>.mp3"
// shows exactly those characters.
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
    void setSingleBorder(bool on);

    // What the caption shows on screen: "&&" becomes "&" and a lone "&" (the access-key mark) disappears.
    static QString displayText(const QString& caption);

Q_SIGNALS:
    void captionChanged();

private:
    void fitToCaption();

    QString m_caption;
    bool m_autoSize = false;
};

} // namespace zentoria
