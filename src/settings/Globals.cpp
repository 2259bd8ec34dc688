#include "Globals.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace zentoria {

Globals& globals() {
    static Globals values;
    return values;
}

QString withoutTrailingSeparator(const QString& folder) {
    return folder.endsWith(u'/') ? folder.chopped(1) : folder;
}

QString GetAppPath() {
    return withoutTrailingSeparator(QCoreApplication::applicationDirPath());
}

QString executableName() {
    return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
}

} // namespace zentoria
