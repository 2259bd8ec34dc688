#pragma once

#include <QLabel>

namespace zentoria {

// A one-line label that shows what fits of its text, cut at the end with an ellipsis, rather than
// cut off at its edge; its tooltip and a screen reader have the text whole. It takes any width a
// layout gives it.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setFullText(const QString& text);
    const QString& fullText() const { return m_full; }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QString m_full;
};

} // namespace zentoria
