#include "Utf8Validator.h"

#include <cstdint>
#include <cstring>

namespace zentoria {

void Utf8Validator::feed(const char* data, qsizetype size) {
    const auto* p = reinterpret_cast<const unsigned char*>(data);
    const auto* const end = p + size;
    while (p < end && !m_failed) {
        if (m_needed == 0) {
            // Reports are mostly ASCII: skip it eight bytes at a time.
            while (end - p >= 8) {
                std::uint64_t word;
                std::memcpy(&word, p, sizeof word);
                if (word & 0x8080808080808080ULL) {
                    break;
                }
                p += 8;
            }
            if (p == end) {
                break;
            }
            const unsigned char c = *p++;
            if (c < 0x80) {
                continue;
            }
            m_low = 0x80;
            m_high = 0xBF;
            if (c >= 0xC2 && c <= 0xDF) {
                m_needed = 1;
            } else if (c >= 0xE0 && c <= 0xEF) {
                m_needed = 2;
                if (c == 0xE0) {
                    m_low = 0xA0; // no overlong three-byte forms
                } else if (c == 0xED) {
                    m_high = 0x9F; // no surrogates
                }
            } else if (c >= 0xF0 && c <= 0xF4) {
                m_needed = 3;
                if (c == 0xF0) {
                    m_low = 0x90; // no overlong four-byte forms
                } else if (c == 0xF4) {
                    m_high = 0x8F; // nothing above U+10FFFF
                }
            } else {
                m_failed = true;
            }
        } else {
            const unsigned char c = *p++;
            if (c < m_low || c > m_high) {
                m_failed = true;
                break;
            }
            m_low = 0x80;
            m_high = 0xBF;
            --m_needed;
        }
    }
}

} // namespace zentoria
