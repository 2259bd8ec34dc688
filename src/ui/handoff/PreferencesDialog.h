#pragma once

#include <QDialog>

#include <functional>

class QLabel;
class QLineEdit;
class QTableWidget;

namespace zentoria {

struct PathMapping;

// Tools > Preferences: where the report's Windows folders are on this computer (several, each to a
// folder that must be here), and the tag editor's command, with the one found shown and a test of it.
// OK keeps what is given and refuses a folder that is not here, saying why.
class PreferencesDialog : public QDialog {
    Q_OBJECT

public:
    // tell says something to the user, as the window's messages do.
    PreferencesDialog(std::function<void(const QString&)> tell, QWidget* parent);

    void accept() override;

private:
    void addMapping(const PathMapping& mapping);
    void testTagEditor();

    std::function<void(const QString&)> m_tell;
    QTableWidget* tblPathMaps;
    QLineEdit* txtTagEditor;
    QLabel* lblTagEditorTest;
};

} // namespace zentoria
