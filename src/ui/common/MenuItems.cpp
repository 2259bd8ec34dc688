#include "MenuItems.h"

#include "settings/LanguageCatalog.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace zentoria {

namespace {

void collect(const QList<QAction*>& actions, QList<QAction*>& out) {
    for (QAction* action : actions) {
        out << action;
        if (const QMenu* menu = action->menu()) {
            collect(menu->actions(), out);
        }
    }
}

} // namespace

QAction* namedAction(QObject* owner, const char* name, const QString& caption, const QKeySequence& shortcut) {
    auto* action = new QAction(caption, owner);
    action->setObjectName(QLatin1StringView(name));
    action->setShortcut(shortcut);
    return action;
}

QList<QAction*> menuItems(const QMenuBar* bar) {
    QList<QAction*> items;
    collect(bar->actions(), items);
    return items;
}

void translateMenuItem(QAction* item) {
    if (const std::optional<CatalogEntry> entry = menuCatalogEntry(item->objectName())) {
        item->setText(Translate(entry->section, entry->key, item->text()));
    }
}

void translateMenuItems(const QMenuBar* bar) {
    for (QAction* item : menuItems(bar)) {
        translateMenuItem(item);
    }
}

} // namespace zentoria
