#include "WebPanel.h"

#include "report/ProblemKind.h"
#include "settings/LanguageCatalog.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/PictureBox.h"
#include "ui/common/Twips.h"
#include "ui/main/FileListView.h"
#include "ui/main/frmMain.h"

#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTimer>

namespace zentoria {

namespace {

// Gap between the line picture and the item name.
constexpr double kGapUnderLine = 30;
// Width of the details label when it shows a file's columns.
constexpr double kDetailsWidth = 2515;
// A column value shows at most this many characters.
constexpr qsizetype kLongestValue = 1200;

// Labels read "&" as an access-key mark: data written to them keeps each "&" by doubling it.
QString keepAmpersands(const QString& text) {
    return text.contains(u'&') ? QString(text).replace(u'&', QStringLiteral("&&")) : text;
}

double bottomOf(const QWidget* widget) {
    const TwipsRect rect = geometryTwips(widget);
    return rect.Top + rect.Height;
}

// The selected rows, top to bottom, read from the selection's ranges rather than row by row.
QList<int> selectedRows(const FileListView* list) {
    const int rows = list->model()->rowCount();
    QList<bool> selected(rows, false);
    for (const QItemSelectionRange& range : list->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom() && row < rows; ++row) {
            selected[row] = true;
        }
    }
    QList<int> inOrder;
    for (int row = 0; row < rows; ++row) {
        if (selected[row]) {
            inOrder.append(row);
        }
    }
    return inOrder;
}

// The list's selected item: the current one when it is selected, else the first selected; -1 for none.
int selectedItem(const FileListView* list) {
    const QModelIndex current = list->currentIndex();
    if (current.isValid() && list->selectionModel()->isRowSelected(current.row(), {})) {
        return current.row();
    }
    const QList<int> rows = selectedRows(list);
    return rows.isEmpty() ? -1 : rows.first();
}

// The details of one file: every further column with a width and a value, as "header: value".
QString columnDetails(const FileListView* list, int row) {
    const FileListModel* model = list->listModel();
    QString details;
    for (int column = 1; column < model->columnCount(); ++column) {
        const QString value = model->subItem(row, column);
        if (value.isEmpty() || list->columnWidth(column) <= 0) {
            continue;
        }
        details += model->headerData(column, Qt::Horizontal).toString() + QStringLiteral(": ") +
                   value.left(kLongestValue);
        if (value.size() > kLongestValue) {
            details += QStringLiteral(" ...\r");
        }
        details += QStringLiteral("\r\n\r\n");
    }
    return details;
}

} // namespace

void StackWebItems(const WebPanelControls& panel) {
    setTopTwips(panel.WebItemName, bottomOf(panel.pctWebLine) + kGapUnderLine);
    setTopTwips(panel.WebItemType, bottomOf(panel.WebItemName));
    setTopTwips(panel.WebToolTip, bottomOf(panel.WebItemType));
    // The hidden tooltip keeps its room.
    setTopTwips(panel.lblInfo, bottomOf(panel.WebToolTip));
}

void ResetWebItems(bool Visible, frmMain& window) {
    const WebPanelControls panel = window.webPanel();
    panel.lblInfo->setVisible(Visible);
    panel.WebItemName->setVisible(Visible);
    panel.WebToolTip->setVisible(Visible && !panel.WebToolTip->caption().isEmpty());
    if (!Visible) {
        panel.vsbBack->hide();
    }
    panel.lblInfo->setCaption({});
    panel.WebItemName->setCaption({});
    panel.WebToolTip->setCaption({});
    window.ReDrawForm();
}

void ShowSelectionInfo(FileListView* list, frmMain& window) {
    const WebPanelControls panel = window.webPanel();
    panel.ShowSelectedItems->stop();
    const FileListModel* model = list->listModel();
    const QList<int> rows = selectedRows(list);

    if (rows.isEmpty()) {
        // Nothing selected: nothing of an earlier selection stays either.
        panel.lblInfo->setCaption({});
        panel.WebItemType->setCaption({});
        StackWebItems(panel);
        window.FitWebPanel(list);
        return;
    }
    if (rows.size() == 1) {
        ShowItemInfo(list, window);
        return;
    }

    QString names;
    for (int row : rows) {
        const QString text = model->text(row);
        if (!text.isEmpty()) {
            names += u'\r' + keepAmpersands(text);
        }
    }
    // Files of different kinds: the count line names the kind of the last one.
    const QString noun = ProblemKindText(model->key(rows.last())).toLower();
    panel.WebToolTip->hide();
    panel.WebItemType->setCaption(
        QString::number(rows.size()) + u' ' + keepAmpersands(noun) +
        Translate(QStringLiteral("Status"), QStringLiteral("PluralSelected"), QStringLiteral("s selected.")) +
        QStringLiteral("\r\r") + names);
    // The details name each file's second column; a list without one has nothing to add, not a blank
    // line per file.
    QString details;
    if (model->columnCount() > 1) {
        details = QStringLiteral("\r");
        for (int row : rows) {
            details += model->subItem(row, 1) + u'\r';
        }
    }
    panel.lblInfo->setCaption(keepAmpersands(details));
    panel.WebItemName->setCaption({});
    StackWebItems(panel);
    window.FitWebPanel(list);
}

void ShowItemInfo(FileListView* list, frmMain& window) {
    const WebPanelControls panel = window.webPanel();
    const bool pending = panel.ShowSelectedItems->isActive();
    // Without a selected item the steps that need one are passed over: the fields stay empty.
    const int row = selectedItem(list);
    const FileListModel* model = list->listModel();

    panel.WebItemName->setCaption({});
    if (row >= 0 && !pending) {
        panel.WebItemName->setCaption(keepAmpersands(model->text(row)));
    }
    setTopTwips(panel.WebItemName, bottomOf(panel.pctWebLine) + kGapUnderLine);
    panel.WebItemType->setCaption({});
    if (row >= 0 && !pending) {
        panel.WebItemType->setCaption(ProblemKindText(model->key(row)));
    }
    setTopTwips(panel.WebItemType, bottomOf(panel.WebItemName));
    if (pending) {
        panel.WebItemName->setCaption({});
        panel.WebItemType->setCaption({});
    }
    panel.WebToolTip->hide();
    setTopTwips(panel.WebToolTip, bottomOf(panel.WebItemType));

    panel.lblInfo->setCaption({});
    setWidthTwips(panel.lblInfo, kDetailsWidth);
    setTopTwips(panel.lblInfo, bottomOf(panel.WebToolTip));
    QString details = row >= 0 ? keepAmpersands(columnDetails(list, row)) : QString();
    if (pending) {
        details.clear();
    }
    panel.lblInfo->setCaption(details);
    window.FitWebPanel(list);
}

} // namespace zentoria
