#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QWidget;

namespace zentoria {

// The window's file-open dialog, kept as settings plus one call, the way the report tools set it up.
// Tests (and anything else that must not block on a modal dialog) install a chooser that answers instead.
class CommonDialog : public QObject {
    Q_OBJECT

public:
    // Answers a request with a chosen file name, or an empty one for a cancelled dialog.
    using Chooser = std::function<QString(const CommonDialog& request)>;

    explicit CommonDialog(QObject* parent = nullptr);

    // Pairs of description and pattern separated by "|", such as "Reports (*.vzt)|*.vzt".
    QString Filter;
    QString DialogTitle;
    QString InitDir;
    // The file chosen by the last ShowOpen(); empty when it was cancelled.
    QString FileName;

    // Shows the file-open dialog, modal, over the parent; true when a file was chosen.
    bool ShowOpen(QWidget* parent);

    void setChooser(Chooser chooser) { m_chooser = std::move(chooser); }

    // The filter in the form Qt's file dialogs take: "Reports (*.vzt);;Old reports (*.txt)". Descriptions
    // that do not name their pattern get it appended, so the dialog still filters by it.
    static QString toQtFilter(const QString& filter);

private:
    Chooser m_chooser;
};

} // namespace zentoria
