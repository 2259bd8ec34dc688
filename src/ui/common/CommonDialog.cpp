#include "CommonDialog.h"

#include "PathMapDialog.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QStringList>
#include <QUrl>

#include <utility>

namespace zentoria {

namespace {

// Qt's dialog reads double quotes in the typed name as a list of names ("a" "b"), so a report named
// my "best" report.vzt typed in would be looked for as "best". A typed name that is an existing file as
// it stands is taken as it stands; anything else goes to Qt's reading.
class OpenFileDialog : public QFileDialog {
public:
    OpenFileDialog(QWidget* parent, const QString& caption, const QString& folder, const QString& filter)
        : QFileDialog(parent, caption, folder, filter) {
        // Qt gives no access to its name box. The line edit of this dialog that last had the keyboard is
        // the one the user typed into; an item view's rename editor is not a name.
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
            auto* edit = qobject_cast<QLineEdit*>(now);
            if (edit && isAncestorOf(edit) && !insideItemView(edit)) {
                m_nameBox = edit;
            }
        });
    }

    QString chosen() const { return m_typed.isEmpty() ? selectedFiles().value(0) : m_typed; }

    void accept() override {
        if (m_nameBox && m_nameBox->text().contains(u'"')) {
            const QFileInfo typed(directory(), m_nameBox->text());
            if (typed.isFile()) {
                m_typed = typed.absoluteFilePath();
                QDialog::accept();
                return;
            }
        }
        QFileDialog::accept();
    }

private:
    bool insideItemView(const QWidget* widget) const {
        for (const QWidget* up = widget->parentWidget(); up && up != this; up = up->parentWidget()) {
            if (qobject_cast<const QAbstractItemView*>(up)) {
                return true;
            }
        }
        return false;
    }

    QPointer<QLineEdit> m_nameBox;
    QString m_typed;
};

} // namespace

CommonDialog::CommonDialog(QObject* parent)
    : QObject(parent) {}

bool CommonDialog::ShowOpen(QWidget* parent) {
    if (m_chooser) {
        FileName = m_chooser(*this);
    } else {
        // Qt's own dialog, whatever the desktop's, so that the sidebar and the size are ours to set.
        OpenFileDialog dialog(parent, DialogTitle, InitDir, toQtFilter(Filter));
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setFileMode(QFileDialog::ExistingFile);
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setViewMode(QFileDialog::Detail);
        QList<QUrl> sidebar;
        for (const QString& folder : SidebarFolders) {
            if (const QUrl url = QUrl::fromLocalFile(folder); !sidebar.contains(url)) {
                sidebar << url;
            }
        }
        if (!sidebar.isEmpty()) {
            dialog.setSidebarUrls(sidebar);
        }
        const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen();
        dialog.resize(
            openDialogSize(dialog.sizeHint(), screen ? screen->availableGeometry().size() : QSize()));
        FileName = dialog.exec() == QDialog::Accepted ? dialog.chosen() : QString();
    }
    return !FileName.isEmpty();
}

bool CommonDialog::ShowSave(QWidget* parent) {
    if (m_chooser) {
        FileName = m_chooser(*this);
        return !FileName.isEmpty();
    }
    const QStringList filters = toQtFilter(Filter).split(QStringLiteral(";;"));
    QString selected = filters.value(FilterIndex - 1);
    FileName = QFileDialog::getSaveFileName(parent, DialogTitle, InitDir, filters.join(QStringLiteral(";;")),
                                            &selected);
    if (const qsizetype chosen = filters.indexOf(selected); chosen >= 0) {
        FilterIndex = static_cast<int>(chosen) + 1;
    }
    return !FileName.isEmpty();
}

bool CommonDialog::ShowFolder(QWidget* parent) {
    FileName = m_chooser ? m_chooser(*this) : QFileDialog::getExistingDirectory(parent, DialogTitle, InitDir);
    return !FileName.isEmpty();
}

std::optional<PathMapping> CommonDialog::ShowPathMap(QWidget* parent, const PathMapping& current,
                                                     const QString& guess) {
    if (m_chooser) {
        // The chooser sees the guess where a folder dialog's start is.
        const QString title = std::exchange(DialogTitle, QStringLiteral("PathMap"));
        const QString start = std::exchange(InitDir, guess);
        const QString answer = m_chooser(*this);
        DialogTitle = title;
        InitDir = start;
        return PathMapping::parse(answer).value_or(PathMapping{});
    }
    PathMapDialog dialog(current, guess, parent);
    if (dialog.exec() != QDialog::Accepted || dialog.answer() == PathMapDialog::Answer::Cancelled) {
        return std::nullopt;
    }
    return dialog.mapping();
}

QSize CommonDialog::openDialogSize(const QSize& hint, const QSize& available) {
    // Wide enough for the name, size, type and date columns side by side, on any screen at any scale.
    const QSize size = hint.expandedTo(QSize(860, 520));
    return available.isValid() ? size.boundedTo(available * 9 / 10) : size;
}

QString CommonDialog::toQtFilter(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList entries;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts[i];
        const QString patterns = QString(parts[i + 1]).replace(u';', u' ');
        // Qt reads the patterns from the parentheses at the end of the description.
        if (description.endsWith(QStringLiteral("(") + patterns + QStringLiteral(")"))) {
            entries << description;
        } else {
            entries << QStringLiteral("%1 (%2)").arg(description, patterns);
        }
    }
    return entries.join(QStringLiteral(";;"));
}

} // namespace zentoria
