#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

class QAction;
class QMenuBar;
class QObject;

namespace zentoria {

// A menu item named as the windows' controls are (its name is how the language file and the tests
// find it), with its design caption and shortcut.
QAction* namedAction(QObject* owner, const char* name, const QString& caption,
                     const QKeySequence& shortcut = {});

// Every item of a menu bar, the menus' own items included, depth first in menu order.
QList<QAction*> menuItems(const QMenuBar* bar);

// Menu items are translated by their names alone, since the language files keep them so ("Menus" and
// "OptionMenus", keyed by the name); an item made later, such as File > Recent > Clear, goes this way too.
// Gives the item, where its name says so, its caption from the language file, its current caption the
// default.
void translateMenuItem(QAction* item);
// The same for every item of the menu bar.
void translateMenuItems(const QMenuBar* bar);

} // namespace zentoria
