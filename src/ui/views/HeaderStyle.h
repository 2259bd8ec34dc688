#pragma once

#include <QProxyStyle>

namespace zentoria {

// The style of a header whose sections may be wider than the view: a sort indicator that would stand
// past the view's right edge stands at that edge instead, so the sort order shows without scrolling.
class HeaderStyle : public QProxyStyle {
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;

    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    // The section and its label as the style draws them, and the indicator where subElementRect says.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

} // namespace zentoria
