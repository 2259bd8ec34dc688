// The language-file lookups on any file: the first two lines of the input name the section and the key,
// the rest is the file. Whatever the bytes, a lookup answers at most 199 code units of whole characters,
// and Translate is ReadIniValue without the blanks around it.
#include "FuzzCheck.h"
#include "settings/Globals.h"
#include "settings/IniReader.h"
#include "settings/LanguageCatalog.h"

#include <QDir>
#include <QFile>

#include <cstdint>
#include <unistd.h>

using namespace zentoria;

namespace {

QString languageFile() {
    static const QString path =
        QDir::tempPath() + QStringLiteral("/zentoria-fuzz-%1.ini").arg(QString::number(::getpid()));
    return path;
}

QByteArray takeLine(QByteArray& bytes) {
    const qsizetype end = bytes.indexOf('\n');
    const QByteArray line = end < 0 ? bytes : bytes.first(end);
    bytes.remove(0, end < 0 ? bytes.size() : end + 1);
    return line;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString section = QString::fromUtf8(takeLine(bytes));
    const QString key = QString::fromUtf8(takeLine(bytes));

    QFile file(languageFile());
    FUZZ_CHECK(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
    file.close();
    globals().LanguageFile = file.fileName();

    const QString fallback = QStringLiteral("<default>");
    const QString raw = ReadIniValue(section, key, fallback);
    FUZZ_CHECK(raw.size() <= 199);
    FUZZ_CHECK(raw.isValidUtf16());
    FUZZ_CHECK(raw == TrimNulls(raw));

    const QString translated = Translate(section, key, fallback);
    FUZZ_CHECK(translated.size() <= raw.size());
    FUZZ_CHECK(raw.contains(translated));

    // The whole value, before the cut, is what the lookup finds in the decoded text.
    const QString whole = readIniString(file.fileName(), section, key, fallback, 1 << 30);
    FUZZ_CHECK(whole.startsWith(raw));
    return 0;
}
