#pragma once

#include <QtGlobal>

#include <sys/types.h>
#include <taglib/tiostream.h>

namespace zentoria::scan {

// A regular file's bytes, read by offset, for the probe's own reads and for TagLib's: one descriptor
// for both, and every read failure kept. TagLib's own stream takes an I/O error, or a file that ends
// before the length it was opened with, for the end of the file, and says nothing.
class ReadOnlyStream : public TagLib::IOStream {
public:
    // The file open at `descriptor` (not closed here), as long as fstat said.
    ReadOnlyStream(int descriptor, qint64 length);

    // Up to `count` bytes from `offset` into `into`, fewer at the end of the file or after a failure;
    // answers how many.
    qint64 read(char* into, qint64 count, qint64 offset);
    // The errno of the first read that failed; 0 when none did.
    int error() const { return m_error; }
    // Whether the file ended before its length: cut while it was read, or a file of the system that
    // holds less than its size says.
    bool cutShort() const { return m_cutShort; }

    // What TagLib reads through.
    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override;
    long tell() const override { return long(m_position); }
    long length() override { return long(m_length); }
    void truncate(long) override {}

protected:
    // One read of the file: the bytes read, 0 at its end, -1 with errno set when it failed.
    virtual ssize_t readAt(char* into, std::size_t count, qint64 offset);

private:
    int m_descriptor;
    qint64 m_length;
    qint64 m_position = 0;
    int m_error = 0;
    bool m_cutShort = false;
};

} // namespace zentoria::scan
