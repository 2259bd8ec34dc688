#pragma once

#include <QObject>

#include <functional>

class QPointF;
class QWidget;

namespace zentoria {

class PictureBox;

// The drag of the separator between the tree and the right pane: while a mouse button (any) is held
// on it, every move makes the tree as wide as the pointer says, within the window, and lays the
// window out.
class SeparatorDrag : public QObject {
    Q_OBJECT

public:
    // The client is the area the separator moves in; redraw runs one layout pass.
    SeparatorDrag(PictureBox* separator, const QWidget* client, std::function<void()> redraw);

private:
    void Separator_MouseMove(const QPointF& position);

    PictureBox* m_separator;
    const QWidget* m_client;
    std::function<void()> m_redraw;
    // True while a mouse button is held on the separator (and not while a layout pass runs).
    bool DraggingSeparator = false;
};

} // namespace zentoria
