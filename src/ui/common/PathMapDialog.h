#pragma once

#include "export/PathMapping.h"

#include <QDialog>

class QLineEdit;

namespace zentoria {

// Asks where the report's Windows folder is on this computer. Reports name files as Melvadex saw them
// ("C:\Music\…"); the user fixes their tags here, where the same files may be under "/media/music".
class PathMapDialog : public QDialog {
    Q_OBJECT

public:
    // What the user chose.
    enum class Answer { Mapped, AsTheyStand, Cancelled };

    // windowsFolder is a guess at the folder, from the files at hand.
    PathMapDialog(const PathMapping& current, const QString& windowsFolder, QWidget* parent = nullptr);

    Answer answer() const { return m_answer; }
    PathMapping mapping() const;

private:
    void acceptMapping();

    QLineEdit* txtWindowsFolder;
    QLineEdit* txtLocalFolder;
    Answer m_answer = Answer::Cancelled;
};

} // namespace zentoria
