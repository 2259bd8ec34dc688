#pragma once

#include "ui/common/PictureBox.h"

#include <QList>

class QTreeView;
class QIcon;
class QLabel;
class QTimer;

namespace zentoria {

class CaptionLabel;

// The web-style panel beside the file list, in the manner of a file manager's folder view: a banner,
// the title of what was activated, a line, and the description of the list's selection. It describes
// the list it is given, 150 ms after a selection change (the running timer is the one flag of a
// pending refresh), and tells the window when its content changed height or its fields were reset, so
// that the window can fit the panel and lay itself out.
class WebPanel : public PictureBox {
    Q_OBJECT

public:
    explicit WebPanel(QWidget* parent);

    // The list whose selection the panel describes, whatever changes it (a click, a key, a refill, a
    // sort, the program); it must outlive the panel's use of it.
    void describe(const QTreeView* list);

    // The panel as it is before the first selection: no border on the details, no icon, no title,
    // every item field empty and stacked under the line. Starts the refresh timer.
    void prepare();
    // For a new report: nothing of the previous selection stays, the title is the program's name and
    // the icon the given one.
    void resetForNewReport(const QIcon& icon);

    QString title() const;
    // The title of what was activated; every "&" in it is shown as typed.
    void setTitle(const QString& title);
    // Shows the icon (when the desktop has one) with its stacked copies behind it.
    void showIcon(const QIcon& icon);
    // Puts copies of the icon behind it, a little to the right and higher up each, so the three look
    // like a stack; shown when Others is true and the icon holds a picture.
    void LoadOtherImages(bool Others);

    // Shows or hides the item fields and empties them (the kind keeps its text), then asks for a
    // layout pass.
    void ResetWebItems(bool Visible);
    // Arms the refresh; arming it again while it runs does not put it off.
    void scheduleRefresh();
    // The refresh the timer runs: counts the list's selection and describes it, one file in detail,
    // several with a count line and their names.
    void ShowSelectionInfo();
    // Writes the name, the problem kind and the column details of the list's selected item and stacks
    // the labels; with a refresh pending it leaves them empty.
    void ShowItemInfo();

    // The lower edge of the content, in twips from the panel's top.
    double contentBottom() const;

Q_SIGNALS:
    // The content's height may have changed: the window fits the panel and its scroll bar.
    void contentHeightChanged();
    // The item fields were reset: the window lays itself out (and, when they were hidden, hides the
    // panel's scroll bar).
    void itemsReset(bool visible);

private:
    void createControls();
    void lblWebFolder_Change();
    // Stacks the item labels under the line picture: the name 30 twips below it, then the kind, the
    // (hidden) tooltip's room and the details, each where the one above ends.
    void stackItems();
    void emptyItemFields();

    const QTreeView* m_list = nullptr;
    bool m_titleChanging = false;

    PictureBox* pctWebLine = nullptr;
    QList<QLabel*> ImgOthers;
    CaptionLabel* lblInfo = nullptr;
    CaptionLabel* lblWebFolder = nullptr;
    CaptionLabel* WebItemType = nullptr;
    CaptionLabel* WebToolTip = nullptr;
    CaptionLabel* WebItemName = nullptr;
    QLabel* ImgIcon = nullptr;
    QTimer* ShowSelectedItems = nullptr;
};

} // namespace zentoria
