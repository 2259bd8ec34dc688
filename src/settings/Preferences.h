#pragma once

#include <QString>

#include <functional>

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

// The main window's outer placement in twips.
struct WindowPlacement {
    float Left = 45;
    float Top = 465;
    float Width = 12000;
    float Height = 7350;

    friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

// The placement kept in "Preferences", with the defaults for whatever is missing or unreadable.
WindowPlacement readPlacement();
// Writes the placement to "Preferences": Width, Height, Top, Left.
void writePlacement(const WindowPlacement& placement);
// What closing the window keeps for the next start, in one write: the tree width, then Width,
// Height, Top, Left, and whether the window was maximized.
void saveClosingState(qint32 treeWidth, const WindowPlacement& window, bool maximized);

// What a completed layout pass saves: the tree width to "Preferences", then the window's Width,
// Height, Top, Left and the tree width to "Last Safe Configuration".
void saveLastSafeConfiguration(qint32 treeWidth, const WindowPlacement& window);
// The tree width of the last safe configuration (3000 when there is none).
qint32 lastSafeTreeWidth();
// Copies the window's Width, Height, Top and Left from "Last Safe Configuration" to "Preferences".
void restorePlacementFromLastSafe();

// How a step that applies a stored geometry ended.
enum class StepResult { Done, InvalidArgument, Failed };

// Runs a step; when it fails with an invalid argument, lets repair() replace what it applied by the
// last safe configuration and runs it again. repair() answers false when it has nothing new to offer.
// There is one repair at most: a value the repair cannot cure fails again, and it must not loop.
StepResult runRepairing(const std::function<StepResult()>& step, const std::function<bool()>& repair);

} // namespace zentoria
