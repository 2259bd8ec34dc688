#include "MenuDecorator.h"

#include "ui/common/ImageList.h"
#include "ui/common/MenuItems.h"

#include <QAction>

namespace zentoria {

MenuDecorator::MenuDecorator(QObject* parent)
    : QObject(parent) {}

bool MenuDecorator::setItemImage(const QString& menuItem, int zeroBasedIndex) {
    if (!m_images || !m_menuBar || zeroBasedIndex < 0 || zeroBasedIndex >= m_images->count()) {
        return false;
    }
    for (QAction* action : menuItems(m_menuBar)) {
        if (action->objectName() == menuItem) {
            action->setIcon(m_images->iconAt(zeroBasedIndex + 1));
            return true;
        }
    }
    return false;
}

} // namespace zentoria
