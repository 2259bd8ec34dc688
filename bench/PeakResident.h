#pragma once

#include <QFile>
#include <QRegularExpression>

// The process's peak resident memory in kB, from the kernel's own count; -1 without /proc.
inline qint64 peakResidentKb() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QRegularExpression peak(QStringLiteral("^VmHWM:\\s+(\\d+) kB$"),
                                  QRegularExpression::MultilineOption);
    return peak.match(QString::fromLatin1(status.readAll())).captured(1).toLongLong();
}
