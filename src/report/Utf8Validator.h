#pragma once

#include <QtGlobal>

namespace zentoria {

// Checks that a byte stream is well-formed UTF-8, fed in pieces of any size: a sequence may be split
// between two pieces. Overlong forms, surrogates and code points above U+10FFFF are rejected.
class Utf8Validator {
public:
    void feed(const char* data, qsizetype size);
    // True while every byte fed so far is well-formed and no sequence is left unfinished.
    bool isValid() const { return !m_failed && m_needed == 0; }
    // True while no byte fed so far broke the encoding; a sequence may still be waiting for its end.
    bool stillPossible() const { return !m_failed; }

private:
    bool m_failed = false;
    int m_needed = 0; // continuation bytes still expected
    // Bounds for the next continuation byte; they narrow only the second byte of a sequence.
    unsigned char m_low = 0x80;
    unsigned char m_high = 0xBF;
};

} // namespace zentoria
