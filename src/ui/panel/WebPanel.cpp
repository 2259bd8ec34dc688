#include "WebPanel.h"

#include "report/ProblemKind.h"
#include "settings/Texts.h"
#include "shell/FileTypeIcons.h"
#include "ui/common/Ampersands.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/DesignFont.h"
#include "ui/common/Named.h"
#include "ui/common/Twips.h"
#include "ui/views/FileListModel.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QTimer>
#include <QTreeView>

namespace zentoria {

namespace {

// Gap between the line picture and the item name.
constexpr double kGapUnderLine = 30;
// Width of the details label when it shows a file's columns.
constexpr double kDetailsWidth = 2515;
// A column value shows at most this many characters.
constexpr qsizetype kLongestValue = 1200;
// The role under which the list's items carry their keys.
constexpr int kKeyRole = Qt::UserRole;

double bottomOf(const QWidget* widget) {
    const TwipsRect rect = geometryTwips(widget);
    return rect.Top + rect.Height;
}

CaptionLabel* wrappingLabel(QWidget* parent, const char* name, const QString& caption,
                            const TwipsRect& rect) {
    auto* label = named(new CaptionLabel(parent), name);
    setGeometryTwips(label, rect);
    label->setWordWrap(true);
    label->setAutoSize(true);
    label->setCaption(caption);
    return label;
}

// The selected rows, top to bottom, read from the selection's ranges rather than row by row.
QList<int> selectedRows(const QTreeView* list) {
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
int selectedItem(const QTreeView* list) {
    const QModelIndex current = list->currentIndex();
    if (current.isValid() && list->selectionModel()->isRowSelected(current.row(), {})) {
        return current.row();
    }
    const QList<int> rows = selectedRows(list);
    return rows.isEmpty() ? -1 : rows.first();
}

QString cell(const QTreeView* list, int row, int column, int role = Qt::DisplayRole) {
    return list->model()->index(row, column).data(role).toString();
}

// The name of a row's file. The program's own list answers without a variant in between, which
// counts when sixteen thousand files are selected.
QString fileName(const QTreeView* list, int row) {
    if (const auto* files = qobject_cast<const FileListModel*>(list->model())) {
        return files->text(row);
    }
    return cell(list, row, 0);
}

// The details of one file: every further column with a width and a value, as "header: value".
QString columnDetails(const QTreeView* list, int row) {
    const QAbstractItemModel* model = list->model();
    QString details;
    for (int column = 1; column < model->columnCount(); ++column) {
        const QString value = cell(list, row, column);
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

WebPanel::WebPanel(QWidget* parent)
    : PictureBox(parent) {
    setObjectName(QStringLiteral("pctWeb"));
    setBackgroundColor(Qt::white);
    setPicture(QPixmap(QStringLiteral(":/zentoria/web-banner.png")));
    setGeometryTwips(this, 0, 0, 2895, 2655);
    setAccessibleName(uiText(txt::Details));
    setAccessibleDescription(uiText(txt::DetailsDescription));
    createControls();
}

void WebPanel::createControls() {
    pctWebLine = named(new PictureBox(this), "pctWebLine");
    setGeometryTwips(pctWebLine, 0, 1030, 2850, 120);
    pctWebLine->setAutoSize(true);
    pctWebLine->setPicture(QPixmap(QStringLiteral(":/zentoria/web-line.png")));

    auto* other = named(new QLabel(this), "ImgOthers");
    other->setAccessibleName(uiText(txt::Mp3Icon));
    other->setProperty("index", 0);
    other->setPixmap(programIcon().pixmap(32, 32));
    setGeometryTwips(other, 720, 240, 480, 480);
    ImgOthers.append(other);

    lblInfo = wrappingLabel(this, "lblInfo", QStringLiteral("lblInfo"), {165, 2160, 2295, 255});
    lblInfo->setSingleBorder(true);

    lblWebFolder =
        wrappingLabel(this, "lblWebFolder", QStringLiteral("Search Results"), {195, 720, 2340, 300});
    lblWebFolder->setFont(designBoldFont(12));
    connect(lblWebFolder, &CaptionLabel::captionChanged, this, &WebPanel::lblWebFolder_Change);

    WebItemType = wrappingLabel(this, "WebItemType", QStringLiteral("Item Type"), {170, 1440, 2100, 195});
    WebToolTip = wrappingLabel(this, "WebToolTip", QStringLiteral("Tooltip"), {170, 1920, 2175, 195});
    WebToolTip->setOpaqueColours(QPalette::ToolTipBase, QPalette::ToolTipText);
    WebItemName = wrappingLabel(this, "WebItemName", QStringLiteral("Item Name"), {170, 1200, 2100, 195});
    WebItemName->setFont(designBoldFont(8.25));
    lblWebFolder->setAccessibleTitle(uiText(txt::ShownTitle));
    WebItemName->setAccessibleTitle(uiText(txt::FileTitle));
    WebItemType->setAccessibleTitle(uiText(txt::ProblemTitle));
    WebToolTip->setAccessibleTitle(uiText(txt::NoteTitle));
    lblInfo->setAccessibleTitle(uiText(txt::Details));
    pctWebLine->setAccessibleName(uiText(txt::TitleLine));

    ImgIcon = named(new QLabel(this), "ImgIcon");
    ImgIcon->setPixmap(programIcon().pixmap(32, 32));
    ImgIcon->setAccessibleName(uiText(txt::Mp3Icon));
    setGeometryTwips(ImgIcon, 195, 175, 480, 480);

    ShowSelectedItems = named(new QTimer(this), "ShowSelectedItems");
    ShowSelectedItems->setInterval(150);
    connect(ShowSelectedItems, &QTimer::timeout, this, &WebPanel::ShowSelectionInfo);
}

void WebPanel::describe(const QTreeView* list) {
    m_list = list;
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &WebPanel::scheduleRefresh);
    // A refill drops the selection without a word, and a sort puts the names in another order.
    connect(list->model(), &QAbstractItemModel::modelReset, this, &WebPanel::scheduleRefresh);
    connect(list->model(), &QAbstractItemModel::layoutChanged, this, &WebPanel::scheduleRefresh);
    // A file's state changes while the fixes are followed.
    connect(list->model(), &QAbstractItemModel::dataChanged, this, [this] {
        if (m_list->selectionModel()->hasSelection()) {
            scheduleRefresh();
        }
    });
}

void WebPanel::prepare() {
    lblInfo->setSingleBorder(false);
    ImgIcon->clear();
    LoadOtherImages(true);
    lblWebFolder->setCaption({});
    WebToolTip->setCaption({});
    // Nothing is selected yet: the item fields end up empty, stacked under the line.
    ShowItemInfo();
    ShowSelectedItems->start();
}

void WebPanel::resetForNewReport(const QIcon& icon) {
    ShowSelectedItems->stop();
    emptyItemFields();
    WebItemType->setCaption({});
    WebToolTip->hide();
    lblWebFolder->setCaption(QStringLiteral("Zentoria"));
    showIcon(icon);
    stackItems();
    Q_EMIT contentHeightChanged();
}

QString WebPanel::title() const {
    return lblWebFolder->caption();
}

void WebPanel::setTitle(const QString& title) {
    lblWebFolder->setCaption(title);
}

void WebPanel::showIcon(const QIcon& icon) {
    // Without the icon (the desktop may have none) the panel's stays as it is.
    if (!icon.isNull()) {
        ImgIcon->setPixmap(icon.pixmap(32, 32));
    }
    LoadOtherImages(true);
}

void WebPanel::LoadOtherImages(bool Others) {
    if (ImgOthers.size() < 2) {
        auto* other = named(new QLabel(this), "ImgOthers");
        other->setAccessibleName(ImgOthers.first()->accessibleName());
        other->setProperty("index", 1);
        setGeometryTwips(other, geometryTwips(ImgOthers.first()));
        ImgOthers.append(other);
    }
    const QPixmap picture = ImgIcon->pixmap();
    if (picture.isNull()) {
        for (QLabel* other : std::as_const(ImgOthers)) {
            other->hide();
        }
        return;
    }
    ImgIcon->raise();
    const TwipsRect icon = geometryTwips(ImgIcon);
    for (int i = 0; i < 2; ++i) {
        QLabel* other = ImgOthers[i];
        other->setPixmap(picture);
        setGeometryTwips(other, icon.Left + 100 * (i + 1), icon.Top - 50 * (i + 1), icon.Width, icon.Height);
        other->lower();
        other->setVisible(Others);
    }
}

void WebPanel::lblWebFolder_Change() {
    if (m_titleChanging) {
        return;
    }
    m_titleChanging = true;
    lblWebFolder->setCaption(doubleAmpersands(lblWebFolder->caption()));
    m_titleChanging = false;
    if (!lblWebFolder->caption().isEmpty()) {
        setTopTwips(pctWebLine, bottomOf(lblWebFolder));
        // A title of several lines moves the line and so everything under it.
        if (WebItemName) {
            stackItems();
            Q_EMIT contentHeightChanged();
        }
    }
}

void WebPanel::stackItems() {
    setTopTwips(WebItemName, bottomOf(pctWebLine) + kGapUnderLine);
    setTopTwips(WebItemType, bottomOf(WebItemName));
    setTopTwips(WebToolTip, bottomOf(WebItemType));
    // The hidden tooltip keeps its room.
    setTopTwips(lblInfo, bottomOf(WebToolTip));
}

void WebPanel::emptyItemFields() {
    for (CaptionLabel* field : {lblInfo, WebItemName, WebToolTip}) {
        field->setCaption({});
    }
}

double WebPanel::contentBottom() const {
    return bottomOf(lblInfo);
}

void WebPanel::ResetWebItems(bool Visible) {
    lblInfo->setVisible(Visible);
    WebItemName->setVisible(Visible);
    WebToolTip->setVisible(Visible && !WebToolTip->caption().isEmpty());
    emptyItemFields();
    Q_EMIT itemsReset(Visible);
}

void WebPanel::scheduleRefresh() {
    if (!ShowSelectedItems->isActive()) {
        ShowSelectedItems->start();
    }
}

void WebPanel::ShowSelectionInfo() {
    ShowSelectedItems->stop();
    if (!m_list) {
        return;
    }
    const QList<int> rows = selectedRows(m_list);
    if (rows.isEmpty()) {
        // Nothing selected: nothing of an earlier selection stays either, one file's name included.
        lblInfo->setCaption({});
        WebItemName->setCaption({});
        WebItemType->setCaption({});
        stackItems();
        Q_EMIT contentHeightChanged();
        return;
    }
    if (rows.size() == 1) {
        ShowItemInfo();
        return;
    }

    QString names;
    for (int row : rows) {
        const QString text = fileName(m_list, row);
        if (!text.isEmpty()) {
            names += u'\r' + doubleAmpersands(text);
        }
    }
    // Files of different kinds: the count line names the kind of the last one. A sentence of the
    // language file's, not a noun with "s" glued on ("16383 id3v2 not founds selected.").
    const QString kind = ProblemKindText(cell(m_list, rows.last(), 0, kKeyRole));
    WebToolTip->hide();
    WebItemType->setCaption(
        doubleAmpersands(uiText(txt::SelectedFiles).arg(QString::number(rows.size()), kind)) +
        QStringLiteral("\r\r") + names);
    // The details name each file's second column; a list without one has nothing to add, not a blank
    // line per file.
    QString details;
    if (m_list->model()->columnCount() > 1) {
        details = QStringLiteral("\r");
        for (int row : rows) {
            details += cell(m_list, row, 1) + u'\r';
        }
    }
    lblInfo->setCaption(doubleAmpersands(details));
    WebItemName->setCaption({});
    stackItems();
    Q_EMIT contentHeightChanged();
}

void WebPanel::ShowItemInfo() {
    const bool pending = ShowSelectedItems->isActive();
    // Without a selected item the steps that need one are passed over: the fields stay empty.
    const int row = m_list ? selectedItem(m_list) : -1;
    const bool describe = row >= 0 && !pending;

    WebItemName->setCaption(describe ? doubleAmpersands(cell(m_list, row, 0)) : QString());
    setTopTwips(WebItemName, bottomOf(pctWebLine) + kGapUnderLine);
    // What following the fixes saw of the file, under its kind.
    const QString state = describe ? cell(m_list, row, 0, Qt::ToolTipRole) : QString();
    WebItemType->setCaption(describe ? ProblemKindText(cell(m_list, row, 0, kKeyRole)) +
                                           (state.isEmpty() ? QString() : u'\r' + doubleAmpersands(state))
                                     : QString());
    setTopTwips(WebItemType, bottomOf(WebItemName));
    WebToolTip->hide();
    setTopTwips(WebToolTip, bottomOf(WebItemType));

    lblInfo->setCaption({});
    setWidthTwips(lblInfo, kDetailsWidth);
    setTopTwips(lblInfo, bottomOf(WebToolTip));
    lblInfo->setCaption(describe ? doubleAmpersands(columnDetails(m_list, row)) : QString());
    Q_EMIT contentHeightChanged();
}

} // namespace zentoria
