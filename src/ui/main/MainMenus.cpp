// frmMain: the menu bar, its items' captions from the language file and their images.
#include "MenuDecorator.h"
#include "frmMain.h"
#include "ui/check/CollectionCheck.h"
#include "ui/common/ImageList.h"
#include "ui/common/MenuItems.h"
#include "ui/document/ReportDocument.h"
#include "ui/follow/FixFollowing.h"
#include "ui/handoff/FileHandOff.h"

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

void frmMain::createMenus() {
    const auto addMenu = [this](const char* name, const QString& caption) {
        return namedMenu(menuBar()->addMenu(caption), name);
    };
    mnuFile = addMenu("mnuFile", QStringLiteral("&File"));
    submnuOpen = namedAction(this, "submnuOpen", QStringLiteral("&Open"), Qt::CTRL | Qt::Key_O);
    mnuFile->addAction(submnuOpen);
    mnuFile->addMenu(m_document->recentMenu());
    mnuFile->addAction(m_document->reloadAction());
    mnuFile->addAction(m_document->saveAsAction());
    mnuFile->addSeparator();
    mnuFile->addAction(m_check->checkFolderAction());
    mnuFile->addAction(m_handOff->exportAction());
    mnuFile->addAction(m_handOff->openWithAction());
    mnuFile->addSeparator();
    submnuExit = namedAction(this, "submnuExit", QStringLiteral("&Quit"), Qt::CTRL | Qt::Key_Q);
    mnuFile->addAction(submnuExit);

    mnuEdit = addMenu("mnuEdit", QStringLiteral("&Edit"));
    mnuEdit->addAction(m_handOff->copyAction());
    mnuEdit->addSeparator();
    mnuEdit->addAction(m_handOff->selectAllAction());
    mnuEdit->addAction(m_handOff->selectMatchingAction());

    mnuTools = addMenu("mnuTools", QStringLiteral("&Tools"));
    submnuWebStyle = namedAction(this, "submnuWebStyle", QStringLiteral("WebStyle"));
    submnuWebStyle->setCheckable(true);
    submnuWebStyle->setChecked(true);
    mnuTools->addAction(submnuWebStyle);
    mnuTools->addAction(m_check->recheckAction());
    mnuTools->addAction(m_follow->followAction());
    mnuTools->addSeparator();
    mnuTools->addAction(m_handOff->preferencesAction());

    mnuHelp = addMenu("mnuHelp", QStringLiteral("&Help"));
    submnuShowHelp = namedAction(this, "submnuShowHelp", QStringLiteral("Contents"), Qt::Key_F1);
    mnuHelp->addAction(submnuShowHelp);

    connect(submnuOpen, &QAction::triggered, this, &frmMain::submnuOpen_Click);
    connect(submnuExit, &QAction::triggered, this, &frmMain::submnuExit_Click);
    connect(submnuShowHelp, &QAction::triggered, this, &frmMain::helpContentsRequested);
    connect(submnuWebStyle, &QAction::triggered, this, &frmMain::submnuWebStyle_Click);
}

void frmMain::SetMenuIcon(QAction* menuItem, const QString& imageKey) {
    mMenu->setItemImage(menuItem, Mns->indexOf(imageKey) - 1);
}

} // namespace zentoria
