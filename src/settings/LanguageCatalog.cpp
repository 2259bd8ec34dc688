#include "LanguageCatalog.h"

#include "Globals.h"
#include "IniReader.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace zentoria {

namespace {

// The value buffer of the profile call holds 200 characters with the closing NUL.
constexpr int kValueBufferSize = 200;

// Only blanks: a tab or a line break in a translation is the translator's.
QString trimSpaces(const QString& text) {
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && text[start] == u' ') {
        ++start;
    }
    while (end > start && text[end - 1] == u' ') {
        --end;
    }
    return text.sliced(start, end - start);
}

} // namespace

QString ReadIniValue(const QString& section, const QString& key, const QString& defaultValue) {
    const QString copied =
        readIniString(globals().LanguageFile, section, key, defaultValue, kValueBufferSize - 1);
    return copied.isEmpty() ? QString() : TrimNulls(copied);
}

QString TrimNulls(const QString& text) {
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == QChar(u'\0')) {
        --end;
    }
    return text.first(end);
}

QString languageFileFor(const QString& languageSetting) {
    const QString beside = GetAppPath() + u'/' + languageSetting;
    if (languageSetting.isEmpty() || QFileInfo::exists(beside)) {
        return beside;
    }
    const QString installed =
        QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                               QStringLiteral("zentoria/languages/") + QFileInfo(languageSetting).fileName());
    return installed.isEmpty() ? beside : installed;
}

QString Translate(const QString& section, const QString& key, const QString& defaultValue) {
    return trimSpaces(ReadIniValue(section, key, defaultValue));
}

std::optional<CatalogEntry> menuCatalogEntry(const QString& menuItemName) {
    if (menuItemName.startsWith(QStringLiteral("submnu"))) {
        return CatalogEntry{QStringLiteral("OptionMenus"), menuItemName.sliced(6)};
    }
    if (menuItemName.startsWith(QStringLiteral("mnu"))) {
        return CatalogEntry{QStringLiteral("Menus"), menuItemName.sliced(3)};
    }
    return std::nullopt;
}

} // namespace zentoria
