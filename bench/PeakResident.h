#pragma once

#include <QFile>
#include <QRegularExpression>

// A memory figure of the process in kB (VmHWM, VmRSS), from the kernel's own count; -1 without /proc.
inline qint64 statusKb(QLatin1StringView field) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QRegularExpression line(u'^' + field + QStringLiteral(":\\s+(\\d+) kB$"),
                                  QRegularExpression::MultilineOption);
    return line.match(QString::fromLatin1(status.readAll())).captured(1).toLongLong();
}

// The process's peak resident memory in kB.
inline qint64 peakResidentKb() {
    return statusKb(QLatin1StringView("VmHWM"));
}

inline qint64 residentKb() {
    return statusKb(QLatin1StringView("VmRSS"));
}

// Starts the peak afresh from what is resident now, so that a later peak is that of the work in between;
// false where the kernel does not allow it.
inline bool resetPeakResident() {
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    return clear.open(QIODevice::WriteOnly) && clear.write("5") == 1;
}
