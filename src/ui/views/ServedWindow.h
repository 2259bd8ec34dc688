#pragma once

#include "ListedFiles.h"
#include "report/FileNameForm.h"

#include <QString>

#include <functional>

class QWidget;

namespace zentoria {

class CommonDialog;

// What a collaborator of the main window needs of it: the window itself (dialogs and messages belong
// to it), the files it lists, its dialogs, and a way to tell the user something.
struct ServedWindow {
    QWidget* widget = nullptr;
    ListedFiles files;
    CommonDialog* dialog = nullptr;
    std::function<void(const QString& text)> tell;
    // A message whose long list of details is one click away.
    std::function<void(const QString& text, const QString& details)> tellInDetail;
    // A yes-or-no question, its long list of details one click away; true for yes.
    std::function<bool(const QString& text, const QString& details)> ask;
    // A passing line in the status bar, for what went as asked.
    std::function<void(const QString& text)> note;
    // How the listed files' names lead back to files: as the open report's maker wrote them.
    std::function<NameReading()> names = [] { return NameReading::Escaped; };
};

} // namespace zentoria
