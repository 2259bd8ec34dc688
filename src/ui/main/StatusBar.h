#pragma once

#include <QFrame>
#include <QList>

class QLabel;
class QTimer;

namespace zentoria {

class ElidedLabel;

// A status bar of keyed panels laid side by side from the left, each as wide as it is told (in twips);
// nothing stretches on its own, the window's layout sets every width. It keeps to the bottom of its
// container at the container's full width, whatever its size, as status bars do.
class StatusBar : public QFrame {
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent = nullptr);

    // Adds a panel at the right end; its label carries the key as object name.
    QLabel* addPanel(const QString& key, double widthTwips, const QString& text = {});
    // The panel of the key, or nullptr.
    QLabel* panel(const QString& key) const;
    int panelCount() const { return static_cast<int>(m_panels.size()); }
    // False, and nothing changes, for an unknown key or a negative width.
    bool setPanelWidth(const QString& key, double widthTwips);
    // Shows the text in the panel of the key, whole in its tooltip; a text longer than the panel takes
    // the room of the empty panels on its left. A new text takes the passing line away.
    void setPanelText(const QString& key, const QString& text);
    // A widget that covers every panel while it is shown (the progress of long work), kept as large as
    // the bar. The bar takes it as its child.
    void setWorkWidget(QWidget* widget);
    // A line over every panel for a while (what a long work found when it ended), until work starts
    // again or the time is up; cut to the bar, whole in its tooltip.
    void showMessage(const QString& text);
    static constexpr int kMessageMs = 20'000;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placePanels();

    struct Panel {
        QString key;
        QLabel* label;
        double width;
    };
    QList<Panel> m_panels;
    QWidget* m_work = nullptr;
    ElidedLabel* m_message;
    QTimer* m_messageTimer;
};

} // namespace zentoria
