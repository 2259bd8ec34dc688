#include "Mp3Files.h"
#include "scan/ReadOnlyStream.h"
#include "scan/TagProbe.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace zentoria::scan;

namespace {

QByteArray bigEndian(quint32 value, bool synchSafe) {
    QByteArray bytes(4, '\0');
    for (int i = 3; i >= 0; --i, value >>= synchSafe ? 7 : 8) {
        bytes[i] = char(value & (synchSafe ? 0x7F : 0xFF));
    }
    return bytes;
}

// One ID3v2 frame of a 2.3 or 2.4 tag (2.2: the three-letter name, a three-byte size, no flags).
QByteArray frame(int major, const QByteArray& id, const QByteArray& data, char formatFlags = 0) {
    if (major == 2) {
        return id + bigEndian(quint32(data.size()), false).sliced(1) + data;
    }
    return id + bigEndian(quint32(data.size()), major == 4) + '\0' + formatFlags + data;
}

QByteArray title(int major, const QByteArray& text = "Waterloo") {
    return frame(major, major == 2 ? "TT2" : "TIT2", '\0' + text);
}

// An ID3v2 tag around the body, with padding, and a footer when the flags ask for one.
QByteArray tag(int major, const QByteArray& body, char flags = 0, int padding = 0) {
    const quint32 size = quint32(body.size() + padding);
    const QByteArray header = char(major) + QByteArray(1, '\0') + flags + bigEndian(size, true);
    return "ID3" + header + body + QByteArray(padding, '\0') +
           ((flags & 0x10) ? "3DI" + header : QByteArray());
}

// An ID3v1 tag: 30-byte title, artist, album, 4-byte year, 30-byte comment (28 and a track when one
// is given), genre.
QByteArray v1(const QByteArray& text, const QByteArray& year = "", const QByteArray& comment = "",
              int track = 0, int genre = 255) {
    const auto field = [](const QByteArray& value, int size) {
        return value.leftJustified(size, '\0', true);
    };
    return "TAG" + field(text, 30) + field(text, 30) + field(text, 30) + field(year, 4) +
           (track ? field(comment, 28) + '\0' + char(track) : field(comment, 30)) + char(genre);
}

// What a reader answers: "mpeg v1 v2", each 1 or 0; no tags without audio.
QString answer(bool mpeg, bool v1, bool v2) {
    return QStringLiteral("%1 %2 %3").arg(mpeg).arg(mpeg && v1).arg(mpeg && v2);
}

// TagLib reading the whole file, as a program that shows its tags does.
QString taglibReads(const QString& path) {
    TagLib::MPEG::File file(QFile::encodeName(path).constData(), false);
    return answer(file.isValid() && file.firstFrameOffset() >= 0,
                  file.hasID3v1Tag() && !file.ID3v1Tag()->isEmpty(),
                  file.hasID3v2Tag() && !file.ID3v2Tag()->frameList().isEmpty());
}

const QByteArray kAudio = mpegFrames();
// However much junk a file holds, a user waits no more than this; instrumented code reads slower.
#ifdef __SANITIZE_ADDRESS__
constexpr int kLongestMs = 10000;
#else
constexpr int kLongestMs = 3000;
#endif
const QByteArray kTitle = v1("Waterloo", "1974");

// A file that fails from `failAt` on: with the error, or (none given) by ending there.
struct FailingStream : ReadOnlyStream {
    using ReadOnlyStream::ReadOnlyStream;
    qint64 failAt = 0;
    int error = 0;

    ssize_t readAt(char* into, std::size_t count, qint64 offset) override {
        if (offset < failAt) {
            return ReadOnlyStream::readAt(into, std::size_t(std::min<qint64>(qint64(count), failAt - offset)),
                                          offset);
        }
        errno = error;
        return error ? -1 : 0;
    }
};

bool succeeds(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

// A btrfs file system in a file, mounted at `mounted`, holding `bytes` as "a.mp3" with one 4 KB block
// from `failAt` changed underneath: its checksum fails, so reading it gives an I/O error.
bool onFailingDisk(const QTemporaryDir& dir, const QString& mounted, const QByteArray& bytes, qint64 failAt) {
    const QString image = dir.filePath("disk");
    QFile disk(image);
    if (!disk.open(QIODevice::ReadWrite) || !disk.resize(32 << 20) ||
        !succeeds("mkfs.btrfs", {"-q", "-M", image}) || !QDir().mkpath(mounted) ||
        !succeeds("mount", {"-o", "loop", image, mounted})) {
        return false;
    }
    const bool written = writeFile(mounted + "/a.mp3", bytes);
    if (!succeeds("umount", {mounted}) || !written) {
        return false;
    }
    const qint64 at = disk.readAll().indexOf(bytes.mid(failAt, 4096));
    return at >= 0 && disk.seek(at) && disk.write("!") == 1 && disk.flush() &&
           succeeds("mount", {"-o", "loop,ro", image, mounted});
}

} // namespace

class tst_TagProbe : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sameAsAReader_data() {
        // TagLib reading the whole file decides, but where TagLib 1.13 misreads it: there "editors" says
        // what eyeD3, id3v2 -l and mutagen show.
        addColumns<QByteArray, QString>("bytes", "editors");
        const auto row = [](const char* name, const QByteArray& bytes, const char* editors = "") {
            addRow(name, bytes, QString(editors));
        };
        row("2.4 with a title", tag(4, title(4), 0, 100) + kAudio + kTitle);
        row("2.3 with a title", tag(3, title(3), 0, 100) + kAudio);
        row("2.2, as old iTunes wrote", tag(2, title(2), 0, 100) + kAudio);
        row("2.3 unsynchronised", tag(3, title(3, "\xFF\x00\xE0 x"), char(0x80), 20) + kAudio);
        row("2.4 extended header",
            tag(4, bigEndian(6, true) + QByteArray("\x01\x00", 2) + title(4), 0x40, 20) + kAudio);
        row("2.4 footer after padding", tag(4, title(4), 0x10, 40) + kAudio);
        row("padding alone", tag(4, {}, 0, 500) + kAudio + kTitle);
        row("10 MB of padding", tag(3, title(3), 0, 10 << 20) + kAudio);
        row("a 30 MB picture",
            tag(4, frame(4, "APIC", "\0image/jpeg\0\x03\0" + QByteArray(30 << 20, 'p'))) + kAudio);
        row("junk before the tag", QByteArray(1000, 'x') + tag(4, title(4)) + kAudio);
        row("a gap after the tag", tag(4, title(4)) + QByteArray(4096, '\0') + kAudio);
        row("audio 128 KiB after the tag", tag(4, title(4)) + QByteArray(131073, '\0') + kAudio + kTitle);
        row("two tags one after the other", tag(4, title(4)) + tag(4, title(4)) + kAudio);
        row("an APE tag before ID3v1", kAudio + "APETAGEX" + QByteArray(24, '\0') + kTitle);
        row("Lyrics3 before ID3v1",
            kAudio + "LYRICSBEGIN" + QByteArray(20, 'l') + "000031LYRICS200" + kTitle);
        row("a frame larger than its tag", tag(4, frame(4, "TIT2", "\0a").replace(7, 1, "\x70")) + kAudio);
        row("a frame name in small letters", tag(4, frame(4, "tit2", "\0a")) + kAudio);
        row("size bytes of 128", tag(4, title(4)).replace(9, 1, "\x80") + kAudio);
        row("a 2.3 frame of iTunes", tag(3, frame(3, QByteArray("TT2\0", 4), "\0a")) + kAudio);
        row("only a data length", tag(4, frame(4, "TIT2", "\0\0\0\x01", 0x01)) + kAudio);
        row("a frame 2.4 no longer has", tag(3, frame(3, "TDAT", QByteArray(1, '\0') + "0101")) + kAudio);
        row("ID3v1 with a track only", kAudio + v1("", "", "", 7));
        row("ID3v1 with a genre only", kAudio + v1("", "", "", 0, 17));
        row("ID3v1 of NULs", kAudio + v1(""));
        row("one frame only: cut short", tag(4, title(4)) + kAudio.first(417));
        row("no audio", tag(4, title(4)) + QByteArray(5000, 'x') + kTitle);
        // TagLib 1.13 skips 4 bytes too few of a 2.3 extended header, and takes the footer off twice.
        row("2.3 extended header",
            tag(3, bigEndian(6, false) + QByteArray(6, '\0') + title(3), 0x40) + kAudio, "1 0 1");
        row("2.4 footer, a short frame last", tag(4, title(4, "Waterloo!"), 0x10) + kAudio, "1 0 1");
        // It takes a 2.4 extended header off the frame data twice: a tiny tag's last frame is lost.
        row("2.4 extended header, no padding",
            tag(4, bigEndian(6, true) + QByteArray("\x01\x00", 2) + title(4, "Abba"), 0x40) + kAudio,
            "1 0 1");
        row("ID3v1 of blanks", kAudio + v1(QByteArray(30, ' '), "    ", QByteArray(30, ' ')), "1 0 0");
        row("64 MB of something else", QByteArray(64 << 20, 'x'), "0 0 0");

        // Tags of every version and flag TagLib reads right, then bytes of their start changed at random.
        QRandomGenerator random(20261125);
        for (int i = 0; i < 400; ++i) {
            const int major = 2 + random.bounded(3);
            QByteArray body;
            for (int frames = random.bounded(3); frames > 0; --frames) {
                body += title(major, QByteArray(random.bounded(40), 'a'));
            }
            const char flags =
                char(random.bounded(2) ? 0x80 : 0) | char(major == 4 && random.bounded(2) ? 0x10 : 0);
            QByteArray bytes = QByteArray(random.bounded(2) * random.bounded(300), 'j') +
                               tag(major, body, flags, (flags & 0x10) ? 30 : random.bounded(200));
            for (int changes = random.bounded(3); changes > 0; --changes) {
                bytes[random.bounded(int(std::min<qsizetype>(bytes.size(), 40)))] = char(random.bounded(256));
            }
            bytes += QByteArray(random.bounded(2) * random.bounded(200000), '\0') + kAudio;
            bytes +=
                v1(random.bounded(2) ? "x" : "", random.bounded(2) ? "1999" : "0000", "", random.bounded(2));
            QTest::addRow("damaged %d", i) << bytes << QString();
        }
    }

    void sameAsAReader() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, editors);
        const QString path = m_dir.filePath("a.mp3");
        QVERIFY(writeFile(path, bytes));
        QElapsedTimer clock;
        clock.start();
        const TagProbe probe = probeTags(path);
        QVERIFY2(clock.elapsed() < kLongestMs, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(answer(probe.outcome == TagProbe::Outcome::Probed, probe.hasID3v1, probe.hasID3v2),
                 editors.isEmpty() ? taglibReads(path) : editors);
    }

    void readFailuresAreNamed_data() {
        // Tags that TagLib reads, 20 KB long: the probe's own reads, at the file's ends, see no failure.
        // Letters at random, so that each 4 KB block of the file is found on the disk once.
        QRandomGenerator random(36);
        QByteArray text(20000, '\0');
        for (char& letter : text) {
            letter = char('a' + random.bounded(26));
        }
        const QByteArray v22 = tag(2, title(2, text)) + kAudio;
        const QByteArray v23 = tag(3, title(3, text), char(0x80)) + kAudio;
        addColumns<QByteArray, QString, int, int, QString>("bytes", "where", "failAt", "error", "named");
        const QString eio = "cannot be read: " + QString::fromLocal8Bit(std::strerror(EIO));
        const QString cut = "cut short while it was read: it holds fewer bytes than its size says";
        const QString stream = "stream", disk = "disk";
        QTest::newRow("2.2, an I/O error in the tag") << v22 << stream << 8192 << EIO << eio;
        QTest::newRow("2.3 unsynchronised, an I/O error in the tag") << v23 << stream << 8192 << EIO << eio;
        QTest::newRow("2.2, cut short in the tag") << v22 << stream << 8192 << 0 << cut;
        QTest::newRow("cut short in the first block")
            << QByteArray(tag(4, title(4)) + kAudio) << stream << 3000 << 0 << cut;
        QTest::newRow("read to its end") << v23 << stream << int(v23.size()) << EIO << QString();
        QTest::newRow("a file of the system, shorter than its size")
            << QByteArray() << QString("/sys/devices/system/cpu/online") << 0 << 0 << cut;
        QTest::newRow("2.2 on a disk that fails") << v22 << disk << 8192 << EIO << eio;
        QTest::newRow("2.3 unsynchronised on a disk that fails") << v23 << disk << 8192 << EIO << eio;
    }

    void readFailuresAreNamed() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, where);
        QFETCH(int, failAt);
        QFETCH(int, error);
        QFETCH(QString, named);
        TagProbe probe;
        if (where == "disk") {
            const QTemporaryDir dir;
            const QString mounted = dir.filePath("mounted");
            const bool mounts = onFailingDisk(dir, mounted, bytes, failAt);
            probe = mounts ? probeTags(mounted + "/a.mp3") : TagProbe();
            succeeds("umount", {mounted});
            if (!mounts) {
                QSKIP("no btrfs file system can be made and mounted here to fail a read");
            }
        } else if (where.startsWith(u'/')) {
            if (!QFileInfo(where).isReadable()) {
                QSKIP("no /sys here");
            }
            probe = probeTags(where);
        } else {
            const QString path = m_dir.filePath("a.mp3");
            QVERIFY(writeFile(path, bytes));
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            FailingStream stream(file.handle(), file.size());
            stream.failAt = failAt;
            stream.error = error;
            probe = probeStream(stream);
        }
        QCOMPARE(probe.outcome, named.isEmpty() ? TagProbe::Outcome::Probed : TagProbe::Outcome::Unreadable);
        if (named.isEmpty()) {
            QVERIFY(probe.hasID3v2);
        } else {
            QCOMPARE(describe({{}, probe.obstacle, probe.error}), named);
        }
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(tst_TagProbe)
#include "tst_tagprobe.moc"
