#pragma once

#include <QString>

class QWidget;

namespace zentoria {

// The manual ships inside the program, filed under the help file's name: "/any/folder/Brantwell.hlp"
// is shown from ":/help/Brantwell.html".
QString helpResourceFor(const QString& helpFile);

// Shows the contents of the help file in the owner's help window, opening that window if needed. The
// window belongs to the owner and closes with it.
void showHelpContents(QWidget* owner, const QString& helpFile);

} // namespace zentoria
