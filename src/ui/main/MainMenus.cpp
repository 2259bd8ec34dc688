// frmMain: the menu bar, its items' captions from the language file and their images.
#include "MenuDecorator.h"
#include "frmMain.h"
#include "settings/LanguageCatalog.h"
#include "ui/common/ImageList.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace zentoria {

namespace {

QMenu* namedMenu(QMenu* menu, const char* name) {
    menu->setObjectName(QLatin1StringView(name));
    menu->menuAction()->setObjectName(QLatin1StringView(name));
    return menu;
}

} // namespace

QAction* frmMain::addMenuItem(QMenu* menu, const QString& name, const QString& caption,
                              const QKeySequence& shortcut) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    return action;
}

void frmMain::createMenus() {
    const auto addMenu = [this](const char* name, const QString& caption) {
        return namedMenu(menuBar()->addMenu(caption), name);
    };
    mnuFile = addMenu("mnuFile", QStringLiteral("&File"));
    submnuOpen = addMenuItem(mnuFile, QStringLiteral("submnuOpen"), QStringLiteral("&Open"),
                             QKeySequence(Qt::CTRL | Qt::Key_O));
    mnuRecent = namedMenu(mnuFile->addMenu(QStringLiteral("&Recent")), "mnuRecent");
    submnuReload = addMenuItem(mnuFile, QStringLiteral("submnuReload"), QStringLiteral("&Reload"),
                               QKeySequence(Qt::Key_F5));
    submnuReload->setEnabled(false);
    mnuFile->addSeparator();
    submnuExport = addMenuItem(mnuFile, QStringLiteral("submnuExport"), QStringLiteral("&Export…"),
                               QKeySequence(Qt::CTRL | Qt::Key_E));
    submnuOpenWith = addMenuItem(mnuFile, QStringLiteral("submnuOpenWith"),
                                 QStringLiteral("Open in &Tag Editor"), QKeySequence(Qt::CTRL | Qt::Key_T));
    mnuFile->addSeparator();
    submnuExit = addMenuItem(mnuFile, QStringLiteral("submnuExit"), QStringLiteral("&Quit"),
                             QKeySequence(Qt::CTRL | Qt::Key_Q));
    mnuEdit = addMenu("mnuEdit", QStringLiteral("&Edit"));
    submnuCopy = addMenuItem(mnuEdit, QStringLiteral("submnuCopy"), QStringLiteral("&Copy"),
                             QKeySequence(Qt::CTRL | Qt::Key_C));
    mnuEdit->addSeparator();
    submnuSelectAll = addMenuItem(mnuEdit, QStringLiteral("submnuSelectAll"), QStringLiteral("Select &All"),
                                  QKeySequence(Qt::CTRL | Qt::Key_A));
    submnuSelectMatching =
        addMenuItem(mnuEdit, QStringLiteral("submnuSelectMatching"), QStringLiteral("Select &Matching…"),
                    QKeySequence(Qt::CTRL | Qt::Key_F));
    mnuTools = addMenu("mnuTools", QStringLiteral("&Tools"));
    submnuWebStyle = addMenuItem(mnuTools, QStringLiteral("submnuWebStyle"), QStringLiteral("WebStyle"), {});
    submnuWebStyle->setCheckable(true);
    submnuWebStyle->setChecked(true);
    mnuHelp = addMenu("mnuHelp", QStringLiteral("&Help"));
    submnuShowHelp = addMenuItem(mnuHelp, QStringLiteral("submnuShowHelp"), QStringLiteral("Contents"),
                                 QKeySequence(Qt::Key_F1));

    connect(submnuOpen, &QAction::triggered, this, &frmMain::submnuOpen_Click);
    connect(submnuExit, &QAction::triggered, this, &frmMain::submnuExit_Click);
    connect(submnuShowHelp, &QAction::triggered, this, &frmMain::submnuShowHelp_Click);
    connect(submnuWebStyle, &QAction::triggered, this, &frmMain::submnuWebStyle_Click);
    connect(submnuReload, &QAction::triggered, this, &frmMain::submnuReload_Click);
    connect(submnuExport, &QAction::triggered, this, &frmMain::submnuExport_Click);
    connect(submnuOpenWith, &QAction::triggered, this, &frmMain::submnuOpenWith_Click);
    connect(submnuCopy, &QAction::triggered, this, &frmMain::submnuCopy_Click);
    connect(submnuSelectAll, &QAction::triggered, this, &frmMain::submnuSelectAll_Click);
    connect(submnuSelectMatching, &QAction::triggered, this, &frmMain::submnuSelectMatching_Click);
}

void frmMain::translateMenus() {
    for (QAction* item : findChildren<QAction*>()) {
        if (const std::optional<CatalogEntry> entry = menuCatalogEntry(item->objectName())) {
            item->setText(Translate(entry->section, entry->key, item->text()));
        }
    }
}

void frmMain::SetMenuIcon(const QString& menuName, const QString& imageKey) {
    mMenu->setItemImage(menuName, Mns->indexOf(imageKey) - 1);
}

} // namespace zentoria
