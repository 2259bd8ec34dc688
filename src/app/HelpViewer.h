#pragma once

#include <QString>

class QTextBrowser;
class QWidget;

namespace zentoria {

// The manual ships inside the program, filed under the help file's name: "/any/folder/Brantwell.hlp"
// is shown from ":/help/Brantwell.html".
QString helpResourceFor(const QString& helpFile);

// Shows the contents of the help file in the help window given, or in a new one of the owner's when
// none is given, and returns the window shown. The window belongs to the owner and closes with it.
QTextBrowser* showHelpContents(QWidget* owner, QTextBrowser* viewer, const QString& helpFile);

} // namespace zentoria
