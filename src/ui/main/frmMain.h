#pragma once

#include "layout/LayoutGeometry.h"
#include "report/ReportEntry.h"
#include "ui/common/MessageBoxes.h"
#include "ui/common/Twips.h"

#include <QMainWindow>

class QAction;
class QFrame;
class QMenu;

namespace zentoria {

class CaptionLabel;
class CollectionCheck;
class CommonDialog;
class FileHandOff;
class FileListView;
class FixFollowing;
class ImageList;
class MenuDecorator;
class PanelScrollBar;
class PictureBox;
class ReportDocument;
class ReportTree;
class StatusBar;
class WebPanel;

// The main window: the report tree on the left, the file list and the web-style panel on the right,
// the address bar above and the status bar below. Every control carries its own name as object name.
// What goes beyond the form lives in collaborators: the open report as a document, handing the
// listed files on, and checking the collection.
class frmMain : public QMainWindow {
    Q_OBJECT

public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // True while the web-style details panel is shown.
    bool WebStyle = true;

    // The load sequence, run once before the window is first shown.
    void Form_Load();

    // Opens a report: double quotes are removed from File (the caller's text too) unless a file's name
    // holds them, the report is read and shown, and the user is told about anything that went wrong.
    void OpenFile(QString& File);

    // Rebuilds the report tree with its root and kind nodes only.
    void LoadTreeView();

    // Activates the selected item of the tree or the list: a tree node lists its children in the file
    // list and titles the panel with its text.
    void ItemClick(QWidget* Obj);

    // Places every pane for the window's size, the tree width and the web style, then saves the result
    // as the last safe configuration. Nothing happens while the window is minimized.
    void ReDrawForm();
    // Sizes the web-style panel to its content and sets up its scroll bar against the file list.
    void FitWebPanel();
    // Stacks the right pane's children bottom to top: the list, the panel over it (it covers the
    // list's left edge), the panel's scroll bar over both.
    void RestorePanelOrder();

    MessageBoxes& messageBoxes() { return m_messages; }

    // The window's size as its design places the tree and the list, in twips.
    TwipsSize designExtent() const;
    // The images of the tree and the list, the file types' icons among them.
    ImageList& images() { return *ImgDirTree; }
    WebPanel* webPanel() const { return pctWeb; }
    // The open report: what is shown, where it came from, whether it is saved.
    ReportDocument& document() const { return *m_document; }

Q_SIGNALS:
    // Help > Contents: whoever owns the help viewer shows the manual.
    void helpContentsRequested();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void createControls();
    void createMenus();
    void SetMenuIcon(QAction* menuItem, const QString& imageKey);

    void submnuOpen_Click();
    void submnuExit_Click();
    void submnuWebStyle_Click();
    void LV_ItemClick();
    void Form_Resize();
    void lblAddress_Change();
    void WEPath_Change();
    LayoutInput readLayoutInput() const;
    // Keeps the client area at least as large as the layout needs for every pane to show.
    void updateMinimumSize(const LayoutInput& in);

    // Set by the tree's expand and collapse notifications; the next activation from the tree takes them.
    bool CollapsePending = false;
    bool ExpandPending = false;
    // Re-entry guard of the address's caption handler, which writes its own caption back.
    bool m_pathChanging = false;
    MessageBoxes m_messages;
    ReportDocument* m_document = nullptr;
    FileHandOff* m_handOff = nullptr;
    CollectionCheck* m_check = nullptr;
    FixFollowing* m_follow = nullptr;

    QWidget* m_client = nullptr;
    PictureBox* pctBorders = nullptr;
    PanelScrollBar* vsbBack = nullptr;
    WebPanel* pctWeb = nullptr;
    FileListView* LV = nullptr;
    MenuDecorator* mMenu = nullptr;
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
    QAction* submnuExit = nullptr;
    QAction* submnuWebStyle = nullptr;
    QAction* submnuShowHelp = nullptr;
};

} // namespace zentoria
