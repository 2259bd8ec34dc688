#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QTest>

#include <type_traits>

// A fixture file in tests/data.
inline QString dataFile(const char* name) {
    return QStringLiteral(ZENTORIA_TEST_DATA "/") + QLatin1StringView(name);
}

// Writes the bytes to the file, making its folder first.
inline bool writeFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// The file's bytes; empty when it cannot be read.
inline QByteArray contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The columns of a data function, their types in the order of the names.
template <typename... Types, typename... Names>
void addColumns(const Names&... names) {
    (QTest::addColumn<Types>(names), ...);
}

// One row of test data named name, its values in the order of the columns.
template <typename... Values>
void addRow(const char* name, const Values&... values) {
    QTestData& row = QTest::newRow(name);
    ((row << static_cast<std::decay_t<const Values&>>(values)), ...);
}

// Writes a report of this many files of kind ID3v1, "C:\Music\Artist <n mod 700>\<n> - Track.mp3" for
// the n-th (or another name than Track.mp3), and the entries in more, to the path; returns the path.
inline QString writeGeneratedReport(const QString& path, int files, const QByteArray& name = "Track.mp3",
                                    const QByteArray& more = {}) {
    QByteArray bytes = "   This file was created with Melvadex (By Orsolt)\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
    for (int i = 1; i <= files; ++i) {
        bytes += "C:\\Music\\Artist " + QByteArray::number(i % 700) + "\\" + QByteArray::number(i) + " - " +
                 name + "\r\n  Melvadex could not get the ID3v1 information\r\n\r\n";
    }
    writeFile(path, bytes + more + "Date of creation: today\r\n");
    return path;
}

// The threads of this process, as the kernel counts them.
inline int threadCount() {
    return int(QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

// QTemporaryDir removes neither a very deep tree nor a name that is no UTF-8.
inline void removeTree(const QString& root) {
    QProcess::execute(QStringLiteral("rm"), {QStringLiteral("-rf"), root});
}
