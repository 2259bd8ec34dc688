#include "CommandLine.h"

#include "Version.h"

#include <QFileInfo>

namespace zentoria {

QString rawCommandLine(const QStringList& arguments) {
    return arguments.mid(1).join(u' ');
}

std::optional<QString> commandLineAnswer(const QString& commandLine) {
    const bool help = commandLine == QLatin1StringView("--help") || commandLine == QLatin1StringView("-h");
    const bool version = commandLine == QLatin1StringView("--version");
    // A report may have any name, these too.
    if ((!help && !version) || QFileInfo::exists(commandLine)) {
        return std::nullopt;
    }
    if (version) {
        return QStringLiteral("zentoria " ZENTORIA_VERSION "\n");
    }
    return QStringLiteral(
        "Usage: zentoria [REPORT]\n"
        "\n"
        "Shows an integrity report of Melvadex (.vzt, or .txt from earlier versions): a tree of\n"
        "the problem kinds, the files of each kind, and a panel describing the selected files.\n"
        "Everything after the program's name is one path; double quotes in it are removed.\n"
        "\n"
        "  -h, --help     show this help and exit\n"
        "      --version  show the version and exit\n");
}

} // namespace zentoria
