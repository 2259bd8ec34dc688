#pragma once

#include <QString>

namespace zentoria {

// One setting of the table below: where it lives and what a read gives when nothing is stored.
struct Setting {
    QString application; // empty: this program
    QString section;
    QString key;
    QString defaultValue;
};

// Every setting the program reads or writes.
namespace settings {
// Melvadex's choice of language file, relative to this program's folder; never written here.
extern const Setting Language;
extern const Setting InitialTVWidth;
extern const Setting WebStyle;
extern const Setting Left;
extern const Setting Top;
extern const Setting Width;
extern const Setting Height;
// "1" when the window was maximized at its last closing; the four values above are then its size
// and place when not maximized.
extern const Setting Maximized;
// The window and tree at the end of the last layout pass that completed.
extern const Setting SafeWidth;
extern const Setting SafeHeight;
extern const Setting SafeTop;
extern const Setting SafeLeft;
extern const Setting SafeInitialTVWidth;
// Where the report's Windows folder is on this computer ("C:\Music=/media/music"); empty: paths are
// used as they stand. Missing until the user was asked.
extern const Setting PathMap;
// The command that opens files in a tag editor, Exec-line style ("kid3 %F"); empty: the first known
// tag editor found.
extern const Setting TagEditor;
// The folder File > Check Folder checked last, where its dialog starts.
extern const Setting LastCheckedFolder;
// "1" while Tools > Follow Fixes is on: the open report's files are watched and their mending shown.
extern const Setting FollowFixes;
} // namespace settings

QString read(const Setting& setting);
// A setting that holds Windows paths: a value typed into the file by hand keeps its single backslashes
// ("C:\Music"), which a plain read would take for escapes.
QString readPathText(const Setting& setting);
// Whether the setting holds a value, even an empty one.
bool isStored(const Setting& setting);
void write(const Setting& setting, const QString& value);
// Converted reads: a stored text that cannot be converted gives the setting's default.
qint32 readInt32(const Setting& setting);
bool readBoolean(const Setting& setting);
float readSingle(const Setting& setting);

} // namespace zentoria
