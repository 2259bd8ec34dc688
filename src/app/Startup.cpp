#include "Startup.h"

#include "HelpViewer.h"
#include "settings/Globals.h"
#include "settings/Preferences.h"
#include "shell/FileTypeIcons.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/ImageList.h"
#include "ui/common/ScreenFit.h"
#include "ui/common/Twips.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QLabel>

namespace zentoria {

namespace {

// Steps that come with later parts of the program; each is called where it belongs in the sequence.
void SetAssociation() {}
void ShowSplash() {}

// Adds the desktop's icon for files of the extension (or the program's own) to the tree's image list,
// keyed by the extension in capitals.
void AddFileTypeIcon(frmMain& window, const QString& extension) {
    window.findChild<ImageList*>(QStringLiteral("ImgDirTree"))
        ->add(fileTypeIconKey(extension), fileTypeIcon(extension));
}

// Moves the window to its saved placement, shows it and lays it out: the pass of the showing still
// started from the tree's design top, this one from where that pass put it. A placement that cannot be
// applied (a negative size written by another tool) is replaced by the last safe one, once.
void restorePlacementAndShow(frmMain& window) {
    // The panel as the program starts: the MP3 icon with its stack and the program's name as title.
    const QIcon mp3 = window.findChild<ImageList*>(QStringLiteral("ImgDirTree"))->icon(QStringLiteral("MP3"));
    window.findChild<QLabel*>(QStringLiteral("ImgIcon"))->setPixmap(mp3.pixmap(32, 32));
    window.LoadOtherImages(true);
    window.findChild<CaptionLabel*>(QStringLiteral("lblWebFolder"))->setCaption(QStringLiteral("Zentoria"));
    runRepairing(
        [&] {
            const WindowPlacement placement = readPlacement();
            if (placement.Width < 0 || placement.Height < 0) {
                return StepResult::InvalidArgument;
            }
            const QRect outer =
                twipsRectOnScreen(placement.Left, placement.Top, placement.Width, placement.Height);
            window.move(outer.topLeft());
            window.resize(outer.size());
            return StepResult::Done;
        },
        [] {
            restorePlacementFromLastSafe();
            return true;
        });
    // The stored size is the outer one, frame included; the frame is known once the window is shown.
    showFitted(&window);
    window.ReDrawForm();
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
    shared.LanguageFile = GetAppPath() + u'/' + read(settings::Language);
    shared.InitialTVWidth = readInt32(settings::InitialTVWidth);

    auto main = std::make_unique<frmMain>();
    main->WebStyle = readBoolean(settings::WebStyle);
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
    main->resize(twipsRectOnScreen(0, 0, listRight + 200, treeBottom + 500).size());

    AddFileTypeIcon(*main, QStringLiteral(".mp3"));
    AddFileTypeIcon(*main, QStringLiteral(".m3u"));
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
