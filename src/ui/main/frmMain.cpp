#include "frmMain.h"

#include "FileListView.h"
#include "LayoutGeometry.h"
#include "MenuDecorator.h"
#include "ReportTree.h"
#include "ReportTreeModel.h"
#include "StatusBar.h"
#include "settings/Globals.h"
#include "settings/LanguageCatalog.h"
#include "shell/FileTypeIcons.h"
#include "shell/ListScrollHook.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/CommonDialog.h"
#include "ui/common/Icons.h"
#include "ui/common/ImageList.h"
#include "ui/common/Named.h"
#include "ui/common/PictureBox.h"
#include "ui/common/Twips.h"

#include <QAction>
#include <QFileSystemWatcher>
#include <QFocusFrame>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenuBar>
#include <QScrollBar>
#include <QTimer>

namespace zentoria {

namespace {

// The window's client area as designed, in twips.
constexpr double kClientWidth = 11880;
constexpr double kClientHeight = 7590;

CaptionLabel* makeLabel(QWidget* parent, const char* name, const QString& caption) {
    auto* label = named(new CaptionLabel(parent), name);
    label->setCaption(caption);
    return label;
}

QFont boldFont(double pointSize) {
    // "MS Sans Serif" is no Linux font; the family falls back to the desktop's sans serif.
    QFont font(QStringLiteral("MS Sans Serif"));
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(pointSize);
    font.setBold(true);
    return font;
}

} // namespace

frmMain::frmMain(QWidget* parent)
    : QMainWindow(parent) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Melvadex's Zentoria"));
    setWindowIcon(programIcon());
    createControls();
    createMenus();
    describeForAssistiveTechnology();
    m_watcher = new QFileSystemWatcher(this);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &frmMain::reportFileChanged);
    setAcceptDrops(true);
    // Whatever changes the list or its selection may enable or disable the Edit and Export items.
    connect(LV->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmMain::updateEditActions);
    connect(LV->listModel(), &QAbstractItemModel::modelReset, this, &frmMain::updateEditActions);
    updateEditActions();
    updateMinimumSize(readLayoutInput());
    const QRect client = twipsRectToPixels(0, 0, kClientWidth, kClientHeight, logicalDpi(this));
    resize(client.width(), client.height() + menuBar()->sizeHint().height());
}

frmMain::~frmMain() {
    // A window destroyed without being closed (in tests) takes its hook along, before its list goes.
    UnhookWindow(LV);
}

void frmMain::createControls() {
    m_report = new ReportTreeModel(this);

    m_client = named(new QWidget(this), "client");
    setCentralWidget(m_client);
    m_client->installEventFilter(this);

    pctBorders = named(new PictureBox(m_client), "pctBorders");
    pctBorders->setBackgroundColor(palette().color(QPalette::Base));
    setGeometryTwips(pctBorders, 4440, 1080, 5775, 2775);

    vsbBack = named(new QScrollBar(Qt::Vertical, pctBorders), "vsbBack");
    setGeometryTwips(vsbBack, 5280, 0, 255, 6375);
    vsbBack->hide();
    // The value changes once a thumb drag ends; during the drag only the slider moves.
    vsbBack->setTracking(false);
    connect(vsbBack, &QScrollBar::sliderMoved, this, &frmMain::vsbBack_Scroll);
    connect(vsbBack, &QScrollBar::valueChanged, this, &frmMain::vsbBack_Change);

    pctWeb = named(new PictureBox(pctBorders), "pctWeb");
    pctWeb->setBackgroundColor(Qt::white);
    pctWeb->setPicture(QPixmap(QStringLiteral(":/zentoria/web-banner.png")));
    setGeometryTwips(pctWeb, 0, 0, 2895, 2655);

    pctWebLine = named(new PictureBox(pctWeb), "pctWebLine");
    setGeometryTwips(pctWebLine, 0, 1030, 2850, 120);
    pctWebLine->setAutoSize(true);
    pctWebLine->setPicture(QPixmap(QStringLiteral(":/zentoria/web-line.png")));

    auto* others = named(new QLabel(pctWeb), "ImgOthers");
    others->setProperty("index", 0);
    others->setPixmap(programIcon().pixmap(32, 32));
    setGeometryTwips(others, 720, 240, 480, 480);
    ImgOthers.append(others);

    lblInfo = makeLabel(pctWeb, "lblInfo", QStringLiteral("lblInfo"));
    setGeometryTwips(lblInfo, 165, 2160, 2295, 255);
    lblInfo->setSingleBorder(true);
    lblInfo->setWordWrap(true);
    lblInfo->setAutoSize(true);

    lblWebFolder = named(new CaptionLabel(pctWeb), "lblWebFolder");
    lblWebFolder->setFont(boldFont(12));
    setGeometryTwips(lblWebFolder, 195, 720, 2340, 300);
    lblWebFolder->setWordWrap(true);
    lblWebFolder->setAutoSize(true);
    lblWebFolder->setCaption(QStringLiteral("Search Results"));
    connect(lblWebFolder, &CaptionLabel::captionChanged, this, &frmMain::lblWebFolder_Change);

    WebItemType = makeLabel(pctWeb, "WebItemType", QStringLiteral("Item Type"));
    setGeometryTwips(WebItemType, 170, 1440, 2100, 195);
    WebItemType->setWordWrap(true);
    WebItemType->setAutoSize(true);

    WebToolTip = makeLabel(pctWeb, "WebToolTip", QStringLiteral("Tooltip"));
    setGeometryTwips(WebToolTip, 170, 1920, 2175, 195);
    {
        QPalette pal = WebToolTip->palette();
        pal.setColor(QPalette::Window, pal.color(QPalette::ToolTipBase));
        pal.setColor(QPalette::WindowText, pal.color(QPalette::ToolTipText));
        WebToolTip->setPalette(pal);
    }
    WebToolTip->setOpaque(true);
    WebToolTip->setWordWrap(true);
    WebToolTip->setAutoSize(true);

    WebItemName = named(new CaptionLabel(pctWeb), "WebItemName");
    WebItemName->setFont(boldFont(8.25));
    setGeometryTwips(WebItemName, 170, 1200, 2100, 195);
    WebItemName->setWordWrap(true);
    WebItemName->setAutoSize(true);
    WebItemName->setCaption(QStringLiteral("Item Name"));

    ImgIcon = named(new QLabel(pctWeb), "ImgIcon");
    ImgIcon->setPixmap(programIcon().pixmap(32, 32));
    setGeometryTwips(ImgIcon, 195, 175, 480, 480);

    LV = named(new FileListView(m_report->nodes(), pctBorders), "LV");
    setGeometryTwips(LV, 3000, 0, 1935, 2685);
    // The list's items name positions in the tree; a rebuilt tree has other nodes at them.
    connect(m_report, &QAbstractItemModel::modelAboutToBeReset, LV->listModel(), &FileListModel::clear);
    connect(LV->header(), &QHeaderView::sectionClicked, this, &frmMain::LV_ColumnClick);
    connect(LV, &QAbstractItemView::clicked, this, &frmMain::LV_ItemClick);
    connect(LV, &FileListView::clickedAnywhere, this, &frmMain::LV_Click);
    connect(LV, &FileListView::mouseDown, this,
            [this](Qt::MouseButton button, Qt::KeyboardModifiers, const QPoint& position) {
                LV_MouseDown(button, position);
            });
    connect(LV, &QAbstractItemView::doubleClicked, this, &frmMain::LV_DblClick);
    // Keys that change the selection are item clicks to the panel, as list controls report them.
    connect(LV, &FileListView::selectionChangedByKey, this, &frmMain::LV_ItemClick);

    RestorePanelOrder();

    mMenu = named(new MenuDecorator(this), "mMenu");

    ShowSelectedItems = named(new QTimer(this), "ShowSelectedItems");
    ShowSelectedItems->setInterval(150);
    connect(ShowSelectedItems, &QTimer::timeout, this, &frmMain::ShowSelectedItems_Timer);

    SB = named(new StatusBar(m_client), "SB");
    setGeometryTwips(SB, 0, 7335, 11880, 255);
    SB->addPanel(QStringLiteral("Playing"), 1440);
    SB->addPanel(QStringLiteral("PlayingStatus"), 1440);
    SB->addPanel(QStringLiteral("Blank"), 1440);
    SB->addPanel(QStringLiteral("About"), 1440, QStringLiteral("By Orsolt"))
        ->setToolTip(QStringLiteral("By Orsolt"));

    ImgDirTree = named(new ImageList(this), "ImgDirTree");
    CMDlg = named(new CommonDialog(this), "CMDlg");

    // Only a staging surface for icons: it never shows.
    pctToLoad = named(new PictureBox(m_client), "pctToLoad");
    setGeometryTwips(pctToLoad, 9960, 0, 300, 300);
    pctToLoad->setAutoSize(true);
    pctToLoad->hide();

    TBAddress = named(new QFrame(m_client), "TBAddress");
    TBAddress->setFrameStyle(QFrame::NoFrame);
    setGeometryTwips(TBAddress, 0, 375, 5055, 520);

    TBAD_Drag = named(new PictureBox(TBAddress), "TBAD_Drag");
    setGeometryTwips(TBAD_Drag, 45, 150, 60, 330);

    WEPath = makeLabel(TBAddress, "WEPath", QStringLiteral("WEPath"));
    setGeometryTwips(WEPath, 840, 150, 2415, 320);
    WEPath->setSingleBorder(true);
    {
        QPalette pal = WEPath->palette();
        pal.setColor(QPalette::Window, pal.color(QPalette::Base));
        pal.setColor(QPalette::WindowText, pal.color(QPalette::Text));
        WEPath->setPalette(pal);
    }
    WEPath->setOpaque(true);
    WEPath->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
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
    setGeometryTwips(Separator, 4200, 1080, 75, 5835);
    connect(Separator, &PictureBox::mousePressed, this, &frmMain::Separator_MouseDown);
    connect(Separator, &PictureBox::mouseMoved, this,
            [this](Qt::MouseButtons, const QPointF& position) { Separator_MouseMove(position); });
    connect(Separator, &PictureBox::mouseReleased, this, &frmMain::Separator_MouseUp);

    TV = named(new ReportTree(m_client), "TV");
    TV->setReportModel(m_report);
    setGeometryTwips(TV, 0, 1080, 4215, 5775);
    connect(TV, &QTreeView::collapsed, this, &frmMain::TV_Collapse);
    connect(TV, &QTreeView::expanded, this, &frmMain::TV_Expand);
    connect(TV, &QAbstractItemView::clicked, this, &frmMain::TV_NodeClick);
    connect(TV, &ReportTree::clickedAnywhere, this, &frmMain::TV_Click);
    // A keyboard user sees the files of the node the keys moved to, as after a click on it.
    connect(TV, &ReportTree::selectionMovedByKey, this, &frmMain::TV_NodeClick);

    Mns = named(new ImageList(this), "Mns");
    fillImageLists();
}

void frmMain::fillImageLists() {
    const auto add = [](ImageList* list, const char* key, const QStringList& names,
                        QStyle::StandardPixmap fallback) {
        list->add(QLatin1StringView(key), themeIcon(names, fallback));
    };
    add(ImgDirTree, "open", {QStringLiteral("folder-open")}, QStyle::SP_DirOpenIcon);
    add(ImgDirTree, "closed", {QStringLiteral("folder")}, QStyle::SP_DirClosedIcon);
    add(ImgDirTree, "leaf", {QStringLiteral("text-x-generic")}, QStyle::SP_FileIcon);
    add(ImgDirTree, "floppy", {QStringLiteral("media-floppy")}, QStyle::SP_DriveFDIcon);
    add(ImgDirTree, "hard", {QStringLiteral("drive-harddisk")}, QStyle::SP_DriveHDIcon);
    add(ImgDirTree, "cdrom", {QStringLiteral("media-optical")}, QStyle::SP_DriveCDIcon);
    add(ImgDirTree, "net", {QStringLiteral("network-workgroup")}, QStyle::SP_DriveNetIcon);
    add(ImgDirTree, "desk", {QStringLiteral("user-desktop")}, QStyle::SP_DesktopIcon);

    add(Mns, "MP3", {QStringLiteral("audio-x-generic"), QStringLiteral("audio-mpeg")},
        QStyle::SP_MediaVolume);
    add(Mns, "Help", {QStringLiteral("help-contents"), QStringLiteral("help-browser")},
        QStyle::SP_DialogHelpButton);
    add(Mns, "Exit", {QStringLiteral("application-exit")}, QStyle::SP_DialogCloseButton);
}

void frmMain::describeForAssistiveTechnology() {
    TV->setAccessibleName(QStringLiteral("Problem kinds"));
    TV->setAccessibleDescription(
        QStringLiteral("The kinds of problem the report found; activating one lists its files."));
    LV->setAccessibleName(QStringLiteral("Files"));
    LV->setAccessibleDescription(QStringLiteral("The files with the activated kind of problem."));
    pctWeb->setAccessibleName(QStringLiteral("Details"));
    pctWeb->setAccessibleDescription(QStringLiteral("What is selected in the list."));
    vsbBack->setAccessibleName(QStringLiteral("Scroll the details"));
    vsbBack->setAccessibleDescription(
        QStringLiteral("Scrolls the details panel when it is taller than the window."));
    WEPath->setAccessibleDescription(QStringLiteral("The open report and the activated kind."));
    SB->setAccessibleName(QStringLiteral("Status"));
    // Tab goes tree, list, the details' scroll bar (while it shows), as a reader goes left to right.
    vsbBack->setFocusPolicy(Qt::TabFocus);
    // The style draws no focus mark on a scroll bar: a focus frame around it, while it has the focus,
    // shows where the keys go.
    // It joins the scroll bar's parent only while it shows, so the panes hold their designed controls alone.
    m_scrollFocus = named(new QFocusFrame(this), "vsbBackFocus");
    m_scrollFocus->hide();
    vsbBack->installEventFilter(this);
    setTabOrder(TV, LV);
    setTabOrder(LV, vsbBack);
}

void frmMain::Form_Load() {
    lblInfo->setSingleBorder(false);
    ImgIcon->clear();
    LoadOtherImages(true);
    lblWebFolder->setCaption({});
    WebToolTip->setCaption({});
    // Nothing is selected yet: the item fields end up empty, stacked under the line.
    ShowItemInfo(LV, *this);
    ShowSelectedItems->start();
    updateRecentMenu(recentReports());
    translateMenus();

    mMenu->setImageList(Mns);
    mMenu->attach(this);
    SetMenuIcon(QStringLiteral("submnuOpen"), QStringLiteral("MP3"));
    SetMenuIcon(QStringLiteral("submnuShowHelp"), QStringLiteral("Help"));
    SetMenuIcon(QStringLiteral("submnuExit"), QStringLiteral("Exit"));
    lblAddress->setCaption(Translate(QStringLiteral("ControlsCaptions"), QStringLiteral("AddressBar"),
                                     QStringLiteral("Address")));
    // Scrolling the list keeps the panel and its scroll bar above it.
    HookWindow(LV, [this] { RestorePanelOrder(); });
}

void frmMain::RestorePanelOrder() {
    zentoria::RestorePanelOrder(LV, pctWeb, vsbBack);
}

void frmMain::showMessage(const QString& text) {
    m_messages.show(this, text);
}

void frmMain::submnuExit_Click() {
    close();
}

void frmMain::submnuShowHelp_Click() {
    Q_EMIT helpContentsRequested();
}

void frmMain::ShowSelectedItems_Timer() {
    ShowSelectionInfo(LV, *this);
}

WebPanelControls frmMain::webPanel() const {
    return {pctWebLine, WebItemName, WebItemType, WebToolTip, lblInfo, vsbBack, ShowSelectedItems};
}

} // namespace zentoria
