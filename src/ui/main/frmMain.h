#pragma once

#include "export/PathMapping.h"
#include "report/ReportEntry.h"
#include "ui/common/MessageBoxes.h"
#include "ui/panel/WebPanel.h"

#include <QMainWindow>

#include <optional>

class QAction;
class QDragEnterEvent;
class QDragMoveEvent;
class QDropEvent;
class QFileSystemWatcher;
class QFocusFrame;
class QItemSelection;
class QFrame;
class QLabel;
class QMenu;
class QScrollBar;
class QTimer;
class QModelIndex;

namespace zentoria {

class CaptionLabel;
class CommonDialog;
class FileListView;
class ImageList;
class MenuDecorator;
struct LayoutInput;
class PictureBox;
class ReportTree;
class ReportTreeModel;
class StatusBar;

// The main window: the report tree on the left, the file list and the web-style panel on the right,
// the address bar above and the status bar below. Every control carries its own name as object name.
class frmMain : public QMainWindow {
    Q_OBJECT

public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // True while the web-style details panel is shown.
    bool WebStyle = true;

    // The load sequence, run once before the window is first shown.
    void Form_Load();

    // Opens a report: every double quote is removed from File (the caller's text too), the report is
    // read and shown, and the user is told about anything that went wrong.
    void OpenFile(QString& File);

    // Rebuilds the report tree with its root and kind nodes only.
    void LoadTreeView(const QString& Key = {});
    // Adds one report entry to the tree under its kind.
    void AddEntryNode(const ReportEntry& entry);
    void AddEntryNode(ReportEntry&& entry);

    // Activates the selected item of the tree or the list: a tree node lists its children in the file
    // list and titles the panel with its text.
    void ItemClick(QWidget* Obj);

    // Places every pane for the window's size, the tree width and the web style, then saves the result
    // as the last safe configuration. Nothing happens while the window is minimized.
    void ReDrawForm();
    // Sizes the web-style panel to its content and sets up its scroll bar against the list.
    void FitWebPanel(FileListView* list);
    // Puts copies of the panel's icon behind it, a little to the right and higher up each, so the three
    // look like a stack; shown when Others is true and the icon holds a picture.
    void LoadOtherImages(bool Others);
    // The controls the selection details write.
    WebPanelControls webPanel() const;

    // Stacks the right pane's children bottom to top: the list, the panel over it (it covers the
    // list's left edge), the panel's scroll bar over both.
    void RestorePanelOrder();

    MessageBoxes& messageBoxes() { return m_messages; }

    // The full path of the report on screen; empty before the first.
    const QString& reportPath() const { return m_reportPath; }
    // The reports last opened, newest first, as File > Recent lists them.
    QStringList recentReports() const;

Q_SIGNALS:
    // Help > Contents: whoever owns the help viewer shows the manual.
    void helpContentsRequested();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void createControls();
    void createMenus();
    // Names and descriptions a screen reader speaks, and the order Tab visits the panes in.
    void describeForAssistiveTechnology();
    QAction* addMenuItem(QMenu* menu, const QString& name, const QString& caption,
                         const QKeySequence& shortcut);
    void SetMenuIcon(const QString& menuName, const QString& imageKey);
    void translateMenus();
    void fillImageLists();
    void showMessage(const QString& text);

    void submnuOpen_Click();
    void submnuExit_Click();
    void submnuReload_Click();
    void acceptDrag(QDropEvent* event);
    // After a report was read and shown: remembers it, watches its file, titles the window.
    void reportOpened(const QString& file);
    void reportFileChanged(const QString& path);
    // The title bar and the address bar name the open report and the activated node.
    void updateTitleAndAddress();
    void openRecent(const QString& report);
    void writeRecentReports(const QStringList& reports);
    // Lists these reports under File > Recent.
    void updateRecentMenu(const QStringList& reports);
    void submnuExport_Click();
    void submnuOpenWith_Click();
    void submnuCopy_Click();
    void submnuSelectAll_Click();
    void submnuSelectMatching_Click();
    // Selects exactly these rows of the list (not empty), the first of them current and in view.
    void selectInList(const QItemSelection& rows);
    // Enables the items that need a selection, or files in the list, only while there are some.
    void updateEditActions();
    // The list's selected files (kind nodes left out), in the list's order.
    QList<const ReportEntry*> selectedFiles() const;
    // What Export writes: the selected files, or without a selection every file of the activated kind.
    QList<const ReportEntry*> filesToExport() const;
    // The path mapping to use for these files: the stored one, or the user's answer when none was ever
    // given and some file is a Windows path. None when the user cancelled.
    std::optional<PathMapping> pathMappingFor(const QList<const ReportEntry*>& files);
    // The mapping the user gave; empty when none was given or it cannot be read.
    static PathMapping storedPathMapping();
    void submnuShowHelp_Click();
    void ShowSelectedItems_Timer();

    void TV_Collapse();
    void TV_Expand(const QModelIndex& node);
    void TV_NodeClick();
    void TV_Click();
    void LV_ColumnClick(int column);
    void LV_ItemClick();
    void LV_Click();
    void LV_MouseDown(Qt::MouseButton button, const QPoint& position);
    void LV_DblClick();

    void Form_Resize();
    void Separator_MouseDown();
    void Separator_MouseMove(const QPointF& position);
    void Separator_MouseUp();
    void vsbBack_Scroll();
    void vsbBack_Change();
    void lblAddress_Change();
    void WEPath_Change();
    void lblWebFolder_Change();
    void submnuWebStyle_Click();
    LayoutInput readLayoutInput() const;
    // Keeps the client area at least as large as the layout needs for every pane to show.
    void updateMinimumSize(const LayoutInput& in);

    // Empties the panel and the title as when the program has just started, for a new report.
    void resetPanelForNewReport();

    // Set by the tree's expand and collapse notifications; the next activation from the tree takes them.
    bool CollapsePending = false;
    bool ExpandPending = false;
    // True while a mouse button is held on the separator (and not while a layout pass runs).
    bool DraggingSeparator = false;
    // Re-entry guards of the caption handlers that write their own caption back.
    bool m_pathChanging = false;
    bool m_titleChanging = false;
    // Twips the panel moves for each step of its scroll bar: 1, unless the panel's content is taller
    // than the 32767 steps a scroll bar has.
    double m_panelScrollUnit = 1;
    MessageBoxes m_messages;
    // The open report's nodes: the tree shows them, the list shows the activated node's children.
    ReportTreeModel* m_report = nullptr;

    QWidget* m_client = nullptr;
    PictureBox* pctBorders = nullptr;
    QScrollBar* vsbBack = nullptr;
    PictureBox* pctWeb = nullptr;
    PictureBox* pctWebLine = nullptr;
    QList<QLabel*> ImgOthers;
    CaptionLabel* lblInfo = nullptr;
    CaptionLabel* lblWebFolder = nullptr;
    CaptionLabel* WebItemType = nullptr;
    CaptionLabel* WebToolTip = nullptr;
    CaptionLabel* WebItemName = nullptr;
    QLabel* ImgIcon = nullptr;
    FileListView* LV = nullptr;
    MenuDecorator* mMenu = nullptr;
    QTimer* ShowSelectedItems = nullptr;
    StatusBar* SB = nullptr;
    ImageList* ImgDirTree = nullptr;
    CommonDialog* CMDlg = nullptr;
    PictureBox* pctToLoad = nullptr;
    QFrame* TBAddress = nullptr;
    PictureBox* TBAD_Drag = nullptr;
    CaptionLabel* WEPath = nullptr;
    CaptionLabel* lblAddress = nullptr;
    PictureBox* Separator = nullptr;
    ReportTree* TV = nullptr;
    ImageList* Mns = nullptr;

    QMenu* mnuFile = nullptr;
    QMenu* mnuEdit = nullptr;
    QMenu* mnuTools = nullptr;
    QMenu* mnuHelp = nullptr;
    QAction* submnuOpen = nullptr;
    QAction* submnuExport = nullptr;
    QAction* submnuOpenWith = nullptr;
    QAction* submnuExit = nullptr;
    QAction* submnuCopy = nullptr;
    QAction* submnuSelectAll = nullptr;
    QAction* submnuSelectMatching = nullptr;
    QMenu* mnuRecent = nullptr;
    QAction* submnuReload = nullptr;
    QString m_reportPath;
    // Set when the open report's file changed after it was read, until it is read again.
    bool m_changedOnDisk = false;
    QFileSystemWatcher* m_watcher = nullptr;
    // Drawn around the panel's scroll bar while it has the keyboard focus.
    QFocusFrame* m_scrollFocus = nullptr;
    // What Select Matching looked for last, offered again.
    QString m_lastPattern;
    QAction* submnuWebStyle = nullptr;
    QAction* submnuShowHelp = nullptr;
};

} // namespace zentoria
