#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace zentoria {

// The per-user settings store: string values addressed by application name, section and key. Each
// application keeps one INI file under the XDG config folder, one group per section: this program's
// own under its executable name ("zentoria.conf"), Melvadex's in "Melvadex/Melvadex.conf". Every read
// goes to the file; nothing is cached. Melvadex's file is not written by Qt, so it is read as plain
// profile text (see IniReader.h).
QString readSetting(const QString& application, const QString& section, const QString& key,
                    const QString& defaultValue);
// The values of several keys of one section of this program's kind of file, read in one pass; an empty
// text for each key that holds none.
QStringList readSettings(const QString& application, const QString& section, const QStringList& keys);
// Whether the key holds a value, even an empty one.
bool hasSetting(const QString& application, const QString& section, const QString& key);
// Creates file and section as needed and replaces the value. The file is replaced whole and at once,
// so a crash or a full disk leaves the previous file, never a half-written one; a damaged file is first
// copied to "<file>.damaged", since the rewrite keeps only what could be read. The result is not
// examined: a preference that cannot be saved is not worth stopping the program for.
void writeSetting(const QString& application, const QString& section, const QString& key,
                  const QString& value);

// One value of a write of several.
struct SettingValue {
    QString section;
    QString key;
    QString value;
};
// Writes several values of one application in one replacement of its file, and only when one of
// them differs from what is stored: the layout saves its configuration after every pass.
void writeSettings(const QString& application, const QList<SettingValue>& values);

// Where an application's settings live.
QString settingsFilePath(const QString& application);

// This program's application name: its executable's name.
QString thisProgram();

} // namespace zentoria
