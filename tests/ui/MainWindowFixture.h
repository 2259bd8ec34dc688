#pragma once

#include "TestData.h"
#include "ui/common/CommonDialog.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QHeaderView>
#include <QTest>
#include <QTreeWidget>

// A loaded main window whose messages are collected instead of shown.
struct MainWindowFixture {
    zentoria::frmMain window;
    QStringList messages;

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

    void show() {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
};

// The tree item whose text is exactly this; nullptr when there is none.
inline QTreeWidgetItem* itemWithText(QTreeWidget* view, const QString& text) {
    const QList<QTreeWidgetItem*> found = view->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
}

// Where a user clicks an item: the middle of its row, or of the part of the row the view shows.
inline QPoint itemPoint(QTreeWidget* view, QTreeWidgetItem* item) {
    view->scrollToItem(item);
    const QRect row = view->visualItemRect(item).intersected(view->viewport()->rect());
    return row.center();
}

inline void clickItem(QTreeWidget* view, QTreeWidgetItem* item, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(view->viewport(), button, modifiers, itemPoint(view, item));
}

// Clicks the expand button in front of an item.
inline void clickExpandButton(QTreeWidget* view, QTreeWidgetItem* item) {
    view->scrollToItem(item);
    const QRect row = view->visualItemRect(item);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      QPoint(row.left() - view->indentation() / 2, row.center().y()));
}

// Clicks the tree or list below its last row.
inline void clickEmptySpace(QTreeWidget* view) {
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      QPoint(view->viewport()->width() / 2, view->viewport()->height() - 3));
}

inline QStringList texts(QTreeWidget* list) {
    QStringList out;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        out << list->topLevelItem(i)->text(0);
    }
    return out;
}
