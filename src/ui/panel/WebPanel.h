#pragma once

class QScrollBar;
class QTimer;

namespace zentoria {

class CaptionLabel;
class FileListView;
class PictureBox;
class frmMain;

// The controls of the web-style panel that describe the file list's selection, and the timer whose
// running state is the one flag of a pending refresh.
struct WebPanelControls {
    PictureBox* pctWebLine = nullptr;
    CaptionLabel* WebItemName = nullptr;
    CaptionLabel* WebItemType = nullptr;
    CaptionLabel* WebToolTip = nullptr;
    CaptionLabel* lblInfo = nullptr;
    QScrollBar* vsbBack = nullptr;
    QTimer* ShowSelectedItems = nullptr;
};

// Shows or hides the item fields and empties them (the kind keeps its text), then lays the window out.
// A click in the list calls it just before it arms the refresh.
void ResetWebItems(bool Visible, frmMain& window);

// The refresh the timer runs: counts the list's selection and describes it, one file in detail, several
// with a count line and their names.
void ShowSelectionInfo(FileListView* list, frmMain& window);

// Writes the name, the problem kind and the column details of the list's selected item and stacks the
// labels; with a refresh pending it leaves them empty.
void ShowItemInfo(FileListView* list, frmMain& window);

// Stacks the item labels under the line picture: the name 30 twips below it, then the kind, the
// (hidden) tooltip's room and the details, each where the one above ends.
void StackWebItems(const WebPanelControls& panel);

} // namespace zentoria
