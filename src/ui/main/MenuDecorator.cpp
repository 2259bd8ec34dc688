#include "MenuDecorator.h"

#include "ui/common/ImageList.h"

#include <QAction>

namespace zentoria {

MenuDecorator::MenuDecorator(QObject* parent)
    : QObject(parent) {}

bool MenuDecorator::setItemImage(QAction* menuItem, int zeroBasedIndex) {
    if (!m_images || !menuItem || zeroBasedIndex < 0 || zeroBasedIndex >= m_images->count()) {
        return false;
    }
    menuItem->setIcon(m_images->iconAt(zeroBasedIndex + 1));
    return true;
}

} // namespace zentoria
