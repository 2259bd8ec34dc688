#pragma once

#include "TestData.h"
#include "ui/common/CommonDialog.h"
#include "ui/main/frmMain.h"
#include "ui/views/FileListView.h"
#include "ui/views/ReportTree.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <algorithm>

// The index whose key (Qt::UserRole) is this, anywhere in the view's model; invalid when there is none.
inline QModelIndex indexOfKey(const QAbstractItemView* view, const QString& key) {
    const QAbstractItemModel* model = view->model();
    return model->match(model->index(0, 0), Qt::UserRole, key, 1, Qt::MatchExactly | Qt::MatchRecursive)
        .value(0);
}

// The index of a top-level row.
inline QModelIndex rowIndex(const QAbstractItemView* view, int row) {
    return view->model()->index(row, 0);
}

// Where a user clicks an index: the middle of its row, or of the part of the row the view shows.
inline QPoint indexPoint(QAbstractItemView* view, const QModelIndex& index) {
    view->scrollTo(index);
    return view->visualRect(index).intersected(view->viewport()->rect()).center();
}

inline void clickIndex(QAbstractItemView* view, const QModelIndex& index,
                       Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
    QVERIFY(index.isValid());
    QTest::mouseClick(view->viewport(), button, modifiers, indexPoint(view, index));
}

// Clicks the expand button in front of an index.
inline void clickExpandButton(QTreeView* view, const QModelIndex& index) {
    view->scrollTo(index);
    const QRect row = view->visualRect(index);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      QPoint(row.left() - view->indentation() / 2, row.center().y()));
}

// The texts (or another role) of the top-level rows, in the order the view shows them.
inline QStringList texts(const QAbstractItemView* view, int role = Qt::DisplayRole) {
    QStringList out;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        out << rowIndex(view, row).data(role).toString();
    }
    return out;
}

inline QStringList keys(const QAbstractItemView* view) {
    return texts(view, Qt::UserRole);
}

// The rows whose items are selected, top to bottom.
inline QList<int> selectedRows(const QAbstractItemView* view) {
    QList<int> rows;
    for (const QModelIndex& index : view->selectionModel()->selectedRows()) {
        rows << index.row();
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

// A loaded main window whose messages are collected instead of shown.
struct MainWindowFixture {
    zentoria::frmMain window;
    QStringList messages;
    zentoria::ReportTree* tree = child<zentoria::ReportTree>("TV");
    zentoria::FileListView* list = child<zentoria::FileListView>("LV");

    MainWindowFixture() {
        window.messageBoxes().setAnswerer([this](const QString& text) { messages << text; });
        window.Form_Load();
    }

    template <typename T>
    T* child(const char* name) {
        return window.findChild<T*>(QLatin1StringView(name));
    }

    void trigger(const char* name) {
        QAction* action = child<QAction>(name);
        QVERIFY2(action, name);
        QVERIFY(action->isEnabled());
        action->trigger();
    }

    // Opens a report the way a user does: File > Open, answered with the file.
    void open(const QString& file) {
        child<zentoria::CommonDialog>("CMDlg")->setChooser(
            [file](const zentoria::CommonDialog&) { return file; });
        trigger("submnuOpen");
    }

    // Sends a drop of this data on the window, as a file manager's drop arrives; answers whether a
    // drag of it was taken.
    bool drop(QMimeData& data) {
        const QPoint middle = window.rect().center();
        QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter);
        QDropEvent dropped(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &dropped);
        return enter.isAccepted() && enter.dropAction() == Qt::CopyAction;
    }

    void show() {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }

    // Clicks the tree node with this key, as a user activates it.
    void activate(const char* key) { clickIndex(tree, indexOfKey(tree, QLatin1StringView(key))); }

    // The texts of the list's selected items, sorted.
    QStringList selectedTexts() const {
        QStringList selected;
        for (const QModelIndex& index : list->selectionModel()->selectedRows()) {
            selected << index.data().toString();
        }
        selected.sort();
        return selected;
    }
};

// A shown window that keeps its settings in a per-user folder of its own (by default in home), its file
// dialogs answered as each test says.
struct HomeWindowFixture : MainWindowFixture {
    QTemporaryDir home;
    zentoria::CommonDialog* dialogs = child<zentoria::CommonDialog>("CMDlg");

    explicit HomeWindowFixture(const QString& configHome = {}) {
        qputenv(
            "XDG_CONFIG_HOME",
            QFile::encodeName(configHome.isEmpty() ? home.filePath(QStringLiteral("config")) : configHome));
        show();
    }
    // Answers every file dialog with this.
    void answer(const QString& text) {
        dialogs->setChooser([text](const zentoria::CommonDialog&) { return text; });
    }
};
