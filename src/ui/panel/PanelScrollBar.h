#pragma once

#include <QScrollBar>

class QFocusFrame;

namespace zentoria {

// The web-style panel's scroll bar: it slides the panel up inside the right pane by its position,
// while the thumb is dragged and when its value changes, and after a change made with the mouse gives
// the keyboard back to the list; keys on it scroll the panel and leave the focus and the list alone.
// A panel taller than the 32767 steps a scroll bar has is scrolled in coarser steps, to its very end.
// The style draws no focus mark on a scroll bar, so a focus frame rings it while it has the focus.
class PanelScrollBar : public QScrollBar {
    Q_OBJECT

public:
    explicit PanelScrollBar(QWidget* parent);

    // The panel it scrolls, and the list that takes the keyboard after a scroll.
    void attach(QWidget* panel, QWidget* list);
    // The range a layout pass gives it: twips scroll one to one again.
    void setRange(double height, qint32 maximum, qint32 largeChange, qint32 smallChange);
    // Sizes the panel to content ending at contentBottom (twips): taller than the panel, the panel
    // grows to it and the scroll bar shows with its range against the list's height; otherwise the
    // scroll bar hides and the panel is as tall as the list, at the top, where its title is. A step is
    // at most a line of the panel's text and a page at most what the list's height shows, so that a
    // key never skips content however tall the panel.
    void fitPanel(double contentBottom, double listHeight);
    // Hides the bar for good, until a fit shows it again.
    void withdraw();
    // The panel hidden or shown again by a layout pass: the bar goes with it and comes back as it was.
    void followPanel(bool panelShown);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void vsbBack_Scroll();
    void vsbBack_Change();

    QWidget* m_panel = nullptr;
    QWidget* m_list = nullptr;
    QFocusFrame* m_focusFrame;
    // Set while a key press or a fit changes the value: the change keeps the focus where it is.
    bool m_keepFocus = false;
    // Whether the last fit wanted the bar, which a hidden panel only sets aside.
    bool m_wanted = false;
    // Twips the panel moves for each step.
    double m_unit = 1;
};

} // namespace zentoria
