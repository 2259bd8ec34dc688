// Runs a fuzz target over the files named on its command line, once each, without the fuzzer: the starting
// corpus and the inputs that once failed become plain tests in every build.
#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char* argv[]) {
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        const QString named = QFile::decodeName(argv[i]);
        QStringList files{named};
        if (QFileInfo(named).isDir()) {
            files.clear();
            for (const QString& name : QDir(named).entryList(QDir::Files, QDir::Name)) {
                files << QDir(named).filePath(name);
            }
        }
        for (const QString& path : std::as_const(files)) {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
                return 2;
            }
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                   size_t(bytes.size()));
            ++inputs;
        }
    }
    std::printf("%d inputs passed\n", inputs);
    return inputs > 0 ? 0 : 2;
}
