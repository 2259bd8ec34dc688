#include "MenuDecorator.h"

#include "ui/common/ImageList.h"

#include <QAction>
#include <QWidget>

namespace zentoria {

MenuDecorator::MenuDecorator(QObject* parent)
    : QObject(parent) {}

bool MenuDecorator::setItemImage(const QString& menuItem, int zeroBasedIndex) {
    if (!m_images || !m_window || zeroBasedIndex < 0 || zeroBasedIndex >= m_images->count()) {
        return false;
    }
    auto* action = m_window->findChild<QAction*>(menuItem);
    if (!action) {
        return false;
    }
    action->setIcon(m_images->iconAt(zeroBasedIndex + 1));
    return true;
}

} // namespace zentoria
