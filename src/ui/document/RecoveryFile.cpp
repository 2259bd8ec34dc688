#include "RecoveryFile.h"

#include "report/ReportWriter.h"
#include "settings/SettingsStore.h"
#include "settings/Texts.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zentoria {

namespace {

QString recoveryPath() {
    return QFileInfo(settingsFilePath(thisProgram()))
        .absoluteDir()
        .filePath(QStringLiteral("zentoria-unsaved.vzt"));
}

} // namespace

bool keepForRecovery(const QByteArray& report) {
    QDir().mkpath(QFileInfo(recoveryPath()).absolutePath());
    return saveReport(recoveryPath(), report, nullptr);
}

QString takeRecoveredReport() {
    const QFileInfo kept(recoveryPath());
    if (!kept.isFile()) {
        return {};
    }
    const QString stamp = kept.lastModified().toString(QStringLiteral("yyyy-MM-dd HH.mm"));
    // Named in the user's language: the message that tells of it, and File > Recent, show the name.
    const QString name = uiText(txt::RecoveredFileName).arg(stamp).replace(u'/', u'-');
    QString target = kept.absoluteDir().filePath(name + QStringLiteral(".vzt"));
    for (int number = 2; QFileInfo::exists(target); ++number) {
        target = kept.absoluteDir().filePath(QStringLiteral("%1 (%2).vzt").arg(name).arg(number));
    }
    return QFile::rename(kept.absoluteFilePath(), target) ? target : kept.absoluteFilePath();
}

} // namespace zentoria
