#include "PanelScrollBar.h"

#include "settings/Texts.h"
#include "ui/common/Twips.h"

#include <QFocusFrame>

#include <cmath>

namespace zentoria {

namespace {

// To the nearest whole number, halves to the even one, as scroll bars round.
qint32 roundHalfEven(double value) {
    return static_cast<qint32>(std::nearbyint(value));
}

} // namespace

PanelScrollBar::PanelScrollBar(QWidget* parent)
    : QScrollBar(Qt::Vertical, parent)
    , m_focusFrame(new QFocusFrame(window())) {
    setObjectName(QStringLiteral("vsbBack"));
    m_focusFrame->setObjectName(QStringLiteral("vsbBackFocus"));
    m_focusFrame->hide();
    setAccessibleName(uiText(txt::ScrollDetails));
    setAccessibleDescription(uiText(txt::ScrollDetailsDescription));
    // Tab reaches it after the list, while it shows.
    setFocusPolicy(Qt::TabFocus);
    // The value changes once a thumb drag ends; during the drag only the slider moves.
    setTracking(false);
    connect(this, &QScrollBar::sliderMoved, this, &PanelScrollBar::vsbBack_Scroll);
    connect(this, &QScrollBar::valueChanged, this, &PanelScrollBar::vsbBack_Change);
}

void PanelScrollBar::attach(QWidget* panel, QWidget* list) {
    m_panel = panel;
    m_list = list;
}

void PanelScrollBar::setRange(double height, qint32 maximum, qint32 largeChange, qint32 smallChange) {
    setHeightTwips(this, height);
    m_unit = 1;
    setMaximum(maximum);
    if (this->maximum() > 0) {
        setPageStep(largeChange);
        setSingleStep(smallChange);
    }
}

void PanelScrollBar::fitPanel(double contentBottom, double listHeight) {
    // The value a fit changes is no user's scroll: the keyboard stays where it is.
    m_keepFocus = true;
    if (contentBottom < geometryTwips(m_panel).Height) {
        withdraw();
        setHeightTwips(m_panel, listHeight);
        // A panel scrolled down before its content shrank would show nothing of it.
        setValue(0);
        setTopTwips(m_panel, 0);
        m_keepFocus = false;
        return;
    }
    setHeightTwips(m_panel, contentBottom);
    m_wanted = true;
    show();
    setLeftTwips(this, geometryTwips(m_panel).Width);
    const double d = std::fabs(geometryTwips(m_panel).Height - listHeight);
    const qint32 top = d <= 32767 ? roundHalfEven(d) : 32767;
    m_unit = d <= 32767 ? 1 : d / top;
    setMaximum(top);
    m_keepFocus = false;
    const double line = pixelsToTwips(m_panel->fontMetrics().lineSpacing(), logicalDpi(m_panel));
    const double page = qMax(line, listHeight - line);
    // A scroll bar takes change values from 1 up; a range too small for a tenth keeps at least 1.
    if (top / 10.0 > 0) {
        setPageStep(qMax(1, qMin(roundHalfEven(top / 10.0), roundHalfEven(page / m_unit))));
    }
    if (top / 100.0 > 0.3) {
        setSingleStep(qMax(1, qMin(roundHalfEven(top / 100.0), roundHalfEven(line / m_unit))));
    }
}

void PanelScrollBar::withdraw() {
    m_wanted = false;
    hide();
}

void PanelScrollBar::followPanel(bool panelShown) {
    setVisible(panelShown && m_wanted);
}

void PanelScrollBar::vsbBack_Scroll() {
    if (!m_panel) {
        return;
    }
    setTopTwips(m_panel, -sliderPosition() * m_unit);
}

void PanelScrollBar::vsbBack_Change() {
    if (!m_panel) {
        return;
    }
    setTopTwips(m_panel, -value() * m_unit);
    if (!m_keepFocus) {
        m_list->setFocus();
    }
}

void PanelScrollBar::keyPressEvent(QKeyEvent* event) {
    m_keepFocus = true;
    QScrollBar::keyPressEvent(event);
    m_keepFocus = false;
}

void PanelScrollBar::focusInEvent(QFocusEvent* event) {
    QScrollBar::focusInEvent(event);
    m_focusFrame->setWidget(this);
}

void PanelScrollBar::focusOutEvent(QFocusEvent* event) {
    QScrollBar::focusOutEvent(event);
    // It leaves the right pane again, so the panes hold their designed controls alone.
    m_focusFrame->setWidget(nullptr);
    m_focusFrame->setParent(window());
    m_focusFrame->hide();
}

} // namespace zentoria
