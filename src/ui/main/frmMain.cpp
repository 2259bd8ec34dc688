#include "frmMain.h"

#include "DesignImages.h"
#include "MenuDecorator.h"
#include "SeparatorDrag.h"
#include "StatusBar.h"
#include "settings/Texts.h"
#include "shell/FileTypeIcons.h"
#include "shell/ListScrollHook.h"
#include "ui/check/CheckProgress.h"
#include "ui/check/CollectionCheck.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/DialogFit.h"
#include "ui/common/ImageList.h"
#include "ui/common/MenuItems.h"
#include "ui/common/Named.h"
#include "ui/common/PictureBox.h"
#include "ui/document/ReportDocument.h"
#include "ui/follow/FixFollowing.h"
#include "ui/handoff/FileHandOff.h"
#include "ui/panel/PanelScrollBar.h"
#include "ui/panel/WebPanel.h"
#include "ui/views/FileListView.h"
#include "ui/views/ListedFiles.h"
#include "ui/views/ReportTree.h"
#include "ui/views/ReportTreeModel.h"

#include <QAction>
#include <QHeaderView>
#include <QMenuBar>

namespace zentoria {

namespace {

// The window's client area as designed, in twips.
constexpr double kClientWidth = 11880;
constexpr double kClientHeight = 7590;

// Closed folder normally, open folder while selected.
QIcon folderIcon(const ImageList& images) {
    QIcon icon;
    for (const QSize& size : {QSize(16, 16), QSize(32, 32)}) {
        icon.addPixmap(images.icon(QStringLiteral("closed")).pixmap(size), QIcon::Normal);
        icon.addPixmap(images.icon(QStringLiteral("open")).pixmap(size), QIcon::Selected);
    }
    return icon;
}

} // namespace

frmMain::frmMain(QWidget* parent)
    : QMainWindow(parent) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Melvadex's Zentoria"));
    setWindowIcon(programIcon());
    fitDialogsToTheirScreens();
    // The open report comes first: the tree and the list show its model.
    m_document = new ReportDocument(this);
    createControls();
    // As a click on the node would, with no expansion or collapse pending to swallow it.
    const auto activate = [this](int position) {
        CollapsePending = false;
        ExpandPending = false;
        TV->setCurrentIndex(TV->indexOf(position));
        ItemClick(TV);
    };
    m_document->attach({this, LV, CMDlg, &m_messages, activate});
    // Nothing of the previous report's selection stays. No layout pass here: at start-up the window is
    // not placed yet, and a pass would save its unplaced geometry as the last safe one.
    connect(m_document, &ReportDocument::shown, pctWeb,
            [this] { pctWeb->resetForNewReport(ImgDirTree->icon(QStringLiteral("MP3"))); });
    connect(m_document, &ReportDocument::titleChanged, this, &QWidget::setWindowTitle);
    connect(m_document, &ReportDocument::addressChanged, WEPath, &CaptionLabel::setCaption);
    const auto tell = [this](const QString& text) { m_messages.show(this, text); };
    const auto tellInDetail = [this](const QString& text, const QString& details) {
        m_messages.show(this, text, details);
    };
    const auto ask = [this](const QString& text, const QString& details) {
        return m_messages.ask(this, text, details);
    };
    const auto note = [this](const QString& text) { SB->showMessage(text); };
    const auto names = [document = m_document] { return document->origin().names; };
    const ServedWindow served{
        this, ListedFiles(&m_document->nodes(), LV), CMDlg, tell, tellInDetail, ask, note, names};
    m_handOff = new FileHandOff(served, this);
    m_check = new CollectionCheck({served, m_document, m_handOff->preferencesAction()}, this);
    SB->setWorkWidget(m_check->progressWidget());
    connect(m_check->progressWidget(), &CheckProgress::ended, SB, &StatusBar::showMessage);
    const auto status = [this](const QString& text) { SB->setPanelText(QStringLiteral("Blank"), text); };
    m_follow = new FixFollowing({m_document, LV->listModel(), status, note}, this);
    createMenus();
    updateMinimumSize(readLayoutInput());
    const QRect client = twipsRectToPixels(0, 0, kClientWidth, kClientHeight, logicalDpi(this));
    resize(client.width(), client.height() + menuBar()->sizeHint().height());
}

frmMain::~frmMain() {
    // A window destroyed without being closed (in tests) takes its hook along, before its list goes.
    UnhookWindow(LV);
}

void frmMain::createControls() {
    ReportTreeModel* report = m_document->model();
    m_client = named(new QWidget(this), "client");
    m_client->setAccessibleName(QStringLiteral("Melvadex's Zentoria"));
    setCentralWidget(m_client);

    pctBorders = named(new PictureBox(m_client), "pctBorders");
    pctBorders->setBackgroundColor(palette().color(QPalette::Base));
    setGeometryTwips(pctBorders, 4440, 1080, 5775, 2775);
    pctBorders->setAccessibleName(uiText(txt::FilesAndDetails));

    vsbBack = new PanelScrollBar(pctBorders);
    setGeometryTwips(vsbBack, 5280, 0, 255, 6375);
    vsbBack->hide();

    pctWeb = new WebPanel(pctBorders);
    connect(pctWeb, &WebPanel::contentHeightChanged, this, [this] { FitWebPanel(); });
    connect(pctWeb, &WebPanel::itemsReset, this, [this](bool visible) {
        if (!visible) {
            vsbBack->withdraw();
        }
        ReDrawForm();
    });

    LV = named(new FileListView(report->nodes(), pctBorders), "LV");
    setGeometryTwips(LV, 3000, 0, 1935, 2685);
    pctWeb->describe(LV);
    vsbBack->attach(pctWeb, LV);
    LV->setAccessibleName(uiText(txt::FilesName));
    LV->setAccessibleDescription(uiText(txt::FilesDescription));
    // The list's items name positions in the tree; a rebuilt tree has other nodes at them.
    connect(report, &QAbstractItemModel::modelAboutToBeReset, LV->listModel(), &FileListModel::clear);
    // Other files may need other room: the panes share it anew, once the list is filled.
    connect(LV->listModel(), &QAbstractItemModel::modelReset, this, [this] {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (isVisible()) {
                    ReDrawForm();
                }
            },
            Qt::QueuedConnection);
    });
    connect(LV, &QAbstractItemView::clicked, this, &frmMain::LV_ItemClick);
    connect(LV, &FileListView::clickedAnywhere, this, &frmMain::LV_ItemClick);
    connect(LV, &QAbstractItemView::doubleClicked, this, [this] { ItemClick(LV); });
    // Keys, and the program selecting for the user, change the selection as clicks do.
    connect(LV, &FileListView::selectionChangedByKey, this, &frmMain::LV_ItemClick);
    connect(LV, &FileListView::selectionChangedByProgram, this, &frmMain::LV_ItemClick);

    RestorePanelOrder();

    mMenu = named(new MenuDecorator(this), "mMenu");

    SB = named(new StatusBar(m_client), "SB");
    setGeometryTwips(SB, 0, 7335, 11880, 255);
    // Panels that stay empty say nothing to a screen reader.
    SB->addPanel(QStringLiteral("Playing"), 1440);
    SB->addPanel(QStringLiteral("PlayingStatus"), 1440);
    SB->addPanel(QStringLiteral("Blank"), 1440)->setAccessibleName(uiText(txt::Status));
    SB->addPanel(QStringLiteral("About"), 1440, QStringLiteral("By Orsolt"))
        ->setToolTip(QStringLiteral("By Orsolt"));
    SB->setAccessibleName(uiText(txt::Status));

    ImgDirTree = named(new ImageList(this), "ImgDirTree");
    CMDlg = named(new CommonDialog(this), "CMDlg");

    // Only a staging surface for icons: it never shows.
    pctToLoad = named(new PictureBox(m_client), "pctToLoad");
    setGeometryTwips(pctToLoad, 9960, 0, 300, 300);
    pctToLoad->setAutoSize(true);
    pctToLoad->hide();
    pctToLoad->setAccessibleName(uiText(txt::IconBeingLoaded));

    TBAddress = named(new QFrame(m_client), "TBAddress");
    TBAddress->setFrameStyle(QFrame::NoFrame);
    setGeometryTwips(TBAddress, 0, 375, 5055, 520);
    TBAddress->setAccessibleName(uiText(txt::AddressBarName));

    TBAD_Drag = named(new PictureBox(TBAddress), "TBAD_Drag");
    setGeometryTwips(TBAD_Drag, 45, 150, 60, 330);
    TBAD_Drag->setAccessibleName(uiText(txt::AddressBarGrip));

    WEPath = named(new CaptionLabel(TBAddress), "WEPath");
    WEPath->setCaption(QStringLiteral("WEPath"));
    setGeometryTwips(WEPath, 840, 150, 2415, 320);
    WEPath->setSingleBorder(true);
    WEPath->setOpaqueColours(QPalette::Base, QPalette::Text);
    WEPath->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    WEPath->setAccessibleTitle(uiText(txt::AddressBar));
    WEPath->setAccessibleDescription(uiText(txt::AddressDescription));
    connect(WEPath, &CaptionLabel::captionChanged, this, &frmMain::WEPath_Change);

    // Connected before its first caption, so that the path box starts after the caption as drawn in
    // this desktop's font, not after where the design font would have ended it.
    lblAddress = named(new CaptionLabel(TBAddress), "lblAddress");
    setGeometryTwips(lblAddress, 240, 195, 570, 195);
    lblAddress->setAutoSize(true);
    connect(lblAddress, &CaptionLabel::captionChanged, this, &frmMain::lblAddress_Change);
    lblAddress->setCaption(QStringLiteral("Address"));

    Separator = named(new PictureBox(m_client), "Separator");
    Separator->setCursor(Qt::SizeHorCursor);
    Separator->setAccessibleName(uiText(txt::SeparatorName));
    setGeometryTwips(Separator, 4200, 1080, 75, 5835);
    // Owned by the separator.
    new SeparatorDrag(Separator, m_client, [this] { ReDrawForm(); });

    TV = named(new ReportTree(m_client), "TV");
    TV->setReportModel(report);
    setGeometryTwips(TV, 0, 1080, 4215, 5775);
    TV->setAccessibleName(uiText(txt::ProblemKinds));
    TV->setAccessibleDescription(uiText(txt::ProblemKindsDescription));
    // Tab goes tree, list, the details' scroll bar (while it shows), as a reader goes left to right.
    setTabOrder(TV, LV);
    setTabOrder(LV, vsbBack);
    connect(TV, &QTreeView::collapsed, this, [this] { CollapsePending = true; });
    connect(TV, &QTreeView::expanded, this, [this](const QModelIndex& node) {
        TV->setCurrentIndex(node);
        ExpandPending = true;
    });
    // A click on a node is told twice, as a node click and as a click in the tree.
    connect(TV, &QAbstractItemView::clicked, this, [this] { ItemClick(TV); });
    connect(TV, &ReportTree::clickedAnywhere, this, [this] { ItemClick(TV); });
    // A keyboard user sees the files of the node the keys moved to, as after a click on it.
    connect(TV, &ReportTree::selectionMovedByKey, this, [this] { ItemClick(TV); });

    Mns = named(new ImageList(this), "Mns");
    fillDesignImages(*ImgDirTree, *Mns);
    report->setFolderIcon(folderIcon(*ImgDirTree));
}

void frmMain::Form_Load() {
    pctWeb->prepare();
    m_document->showRecentReports();
    translateMenuItems(menuBar());

    mMenu->setImageList(Mns);
    SetMenuIcon(submnuOpen, QStringLiteral("MP3"));
    SetMenuIcon(submnuShowHelp, QStringLiteral("Help"));
    SetMenuIcon(submnuExit, QStringLiteral("Exit"));
    lblAddress->setCaption(uiText(txt::AddressBar));
    // Scrolling the list keeps the panel and its scroll bar above it.
    HookWindow(LV, [this] { RestorePanelOrder(); });
    // Before any report: the stored look checked in the menu and no address.
    submnuWebStyle->setChecked(WebStyle);
    WEPath->setCaption({});
}

void frmMain::RestorePanelOrder() {
    zentoria::RestorePanelOrder(LV, pctWeb, vsbBack);
}

TwipsSize frmMain::designExtent() const {
    // The tree and the list are never hidden, so their design places are where they stand now.
    const TwipsRect list = geometryTwips(LV);
    const TwipsRect tree = geometryTwips(TV);
    return {list.Left + list.Width + 200, tree.Top + tree.Height + 500};
}

void frmMain::submnuExit_Click() {
    close();
}

} // namespace zentoria
