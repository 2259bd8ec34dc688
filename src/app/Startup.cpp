#include "Startup.h"

#include "HelpViewer.h"
#include "Version.h"
#include "settings/Globals.h"
#include "settings/LanguageCatalog.h"
#include "settings/Preferences.h"
#include "settings/Texts.h"
#include "shell/FileAssociation.h"
#include "shell/FileTypeIcons.h"
#include "ui/common/ImageList.h"
#include "ui/common/ScreenFit.h"
#include "ui/document/ReportDocument.h"
#include "ui/main/frmMain.h"
#include "ui/splash/frmSplash.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QPointer>
#include <QTextBrowser>
#include <QTimer>
#include <QTranslator>

namespace zentoria {

namespace {

// Makes this copy of the program the one that opens reports from the desktop, with the report icon.
// Reports of earlier versions (".txt") are text files of every kind and stay the text editor's.
void registerReportType() {
    SetAssociation({QStringLiteral(".vzt"), QStringLiteral("application/x-melvadex-integrity-report"),
                    QStringLiteral("Melvadex Integrity Report"),
                    QStringLiteral("application-x-melvadex-integrity-report")},
                   {QStringLiteral(ZENTORIA_APP_ID), QCoreApplication::applicationFilePath()});
}

// Adds the desktop's icon for files of the extension (or the program's own) to the tree's image list,
// keyed by the extension in capitals.
void AddFileTypeIcon(frmMain& window, const QString& extension) {
    window.images().add(fileTypeIconKey(extension), fileTypeIcon(extension));
}

// Qt's own texts (the Cancel buttons, the file and folder dialogs) in the language file's language,
// from the translations Debian ships with Qt; English where there are none.
void loadQtTranslations(const QString& locale) {
    // One language at a time, also when the program is started again in one process.
    static QPointer<QTranslator> loaded;
    delete loaded;
    if (locale.isEmpty()) {
        return;
    }
    loaded = new QTranslator(qApp);
    if (loaded->load(QStringLiteral("qtbase_") + locale,
                     QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(loaded);
    }
}

void processPendingEvents() {
    QCoreApplication::processEvents();
}

} // namespace

std::unique_ptr<frmMain> Main(const QStringList& arguments, const StartUpHooks& hooks) {
    Globals& shared = globals();
    shared.HelpFile = GetAppPath() + QStringLiteral("/Brantwell.hlp");
    registerReportType();
    shared.LanguageFile = languageFileFor(read(settings::Language));
    loadQtTranslations(uiText(txt::Locale));
    shared.InitialTVWidth = readInt32(settings::InitialTVWidth);

    auto main = std::make_unique<frmMain>();
    main->WebStyle = readBoolean(settings::WebStyle);
    if (hooks.mainWindowCreated) {
        hooks.mainWindowCreated(*main);
    }
    QObject::connect(main.get(), &frmMain::helpContentsRequested, main.get(),
                     [window = main.get(), viewer = QPointer<QTextBrowser>()]() mutable {
                         viewer = showHelpContents(window, viewer, globals().HelpFile);
                     });

    main->Form_Load();
    // Owned by the main window; it deletes itself when it closes and has shown the main window.
    QPointer<frmSplash> splash = new frmSplash(main.get());
    splash->ShowSplash(false);
    // A message (a corrupted report given on the command line) closes the splash first: nothing may
    // stand in front of it, and the window it belongs to is then on screen.
    main->messageBoxes().setBeforeShowing([splash] {
        if (splash) {
            splash->close();
        }
    });
    QApplication::setOverrideCursor(Qt::WaitCursor);
    processPendingEvents();

    // Sized from the design extents of the tree and the list; the placement comes later.
    const TwipsSize design = main->designExtent();
    main->resize(twipsRectOnScreen(0, 0, design.Width, design.Height).size());

    AddFileTypeIcon(*main, QStringLiteral(".mp3"));
    AddFileTypeIcon(*main, QStringLiteral(".m3u"));
    main->LoadTreeView();
    QString commandLine = rawCommandLine(arguments);
    if (commandLine.size() > 0) {
        main->OpenFile(commandLine);
    }
    // A check's result that the last session's end kept is told of before the window shows.
    main->document().tellOfRecovery();
    main->messageBoxes().setBeforeShowing({});
    if (splash && splash->isVisible()) {
        splash->CloseIt->start();
    }
    if (hooks.closeTimerArmed) {
        hooks.closeTimerArmed();
    }

    QApplication::restoreOverrideCursor();
    processPendingEvents();
    return main;
}

} // namespace zentoria
