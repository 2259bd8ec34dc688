#pragma once

#include <QByteArray>
#include <QIODevice>

#include <algorithm>

// A device that hands out its bytes a few at a time, as pipes and network file systems may: at most
// `step` bytes a read.
class ShortReadDevice : public QIODevice {
public:
    ShortReadDevice(QByteArray bytes, qint64 step)
        : m_bytes(std::move(bytes))
        , m_step(qMax<qint64>(1, step)) {
        open(QIODevice::ReadOnly);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        const qint64 count = std::min({maxSize, m_step, qint64(m_bytes.size()) - m_at});
        std::copy_n(m_bytes.constData() + m_at, count, data);
        m_at += count;
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_step;
    qint64 m_at = 0;
};
