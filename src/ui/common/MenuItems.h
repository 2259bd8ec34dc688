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

// Gives every item of the menu bar whose name says so its caption from the language file, with its
// current caption as the default.
void translateMenuItems(const QMenuBar* bar);

} // namespace zentoria
