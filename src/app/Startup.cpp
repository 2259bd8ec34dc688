#include "Startup.h"

#include "HelpViewer.h"
#include "settings/Globals.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/Twips.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QTreeWidget>

namespace zentoria {

namespace {

// Steps that come with later parts of the program; each is called where it belongs in the sequence.
void SetAssociation() {}
void ShowSplash() {}
void AddFileTypeIcon(const QString& extension) {
    Q_UNUSED(extension);
}

QString melvadexLanguageSetting() {
    return {};
}

// First-run placement in twips, until placement is kept between runs.
void restorePlacementAndShow(frmMain& window) {
    const double dpi = logicalDpi(&window);
    window.move(twipsToPixels(45, dpi), twipsToPixels(465, dpi));
    window.resize(twipsToPixels(12000, dpi), twipsToPixels(7350, dpi));
    window.show();
}

void processPendingEvents() {
    QCoreApplication::processEvents();
}

} // namespace

QString rawCommandLine(const QStringList& arguments) {
    return arguments.mid(1).join(u' ');
}

std::unique_ptr<frmMain> Main(const QStringList& arguments, const StartUpHooks& hooks) {
    Globals& shared = globals();
    shared.HelpFile = GetAppPath() + QStringLiteral("/Brantwell.hlp");
    SetAssociation();
    shared.LanguageFile = GetAppPath() + u'/' + melvadexLanguageSetting();
    shared.InitialTVWidth = 3000;

    auto main = std::make_unique<frmMain>();
    main->WebStyle = true;
    if (hooks.mainWindowCreated) {
        hooks.mainWindowCreated(*main);
    }
    QObject::connect(main.get(), &frmMain::helpContentsRequested, main.get(),
                     [window = main.get()] { showHelpContents(window, globals().HelpFile); });

    main->Form_Load();
    main->findChild<QAction*>(QStringLiteral("submnuWebStyle"))->setChecked(main->WebStyle);
    main->findChild<CaptionLabel*>(QStringLiteral("WEPath"))->setCaption({});
    ShowSplash();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    processPendingEvents();

    auto* tree = main->findChild<QWidget*>(QStringLiteral("TV"));
    auto* list = main->findChild<QWidget*>(QStringLiteral("LV"));
    tree->setVisible(true);
    list->setVisible(true);
    // Sized from the design extents of the tree and the list, as twips; the placement comes later.
    const double dpi = logicalDpi(main.get());
    const double listRight = pixelsToTwips(list->x() + list->width(), dpi);
    const double treeBottom = pixelsToTwips(tree->y() + tree->height(), dpi);
    main->resize(twipsToPixels(listRight + 200, dpi), twipsToPixels(treeBottom + 500, dpi));

    AddFileTypeIcon(QStringLiteral(".mp3"));
    AddFileTypeIcon(QStringLiteral(".m3u"));
    main->LoadTreeView();
    QString commandLine = rawCommandLine(arguments);
    if (commandLine.size() > 0) {
        main->OpenFile(commandLine);
    }
    restorePlacementAndShow(*main);

    QApplication::restoreOverrideCursor();
    processPendingEvents();
    return main;
}

} // namespace zentoria
