// The conversions of stored settings on any text: none may fail on input, and what the program writes
// must read back as the same value.
#include "FuzzCheck.h"
#include "settings/Conversions.h"

#include <cmath>
#include <cstdint>

using namespace zentoria;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));

    if (const std::optional<qint32> number = toInt32(text)) {
        FUZZ_CHECK(toInt32(fromInt32(*number)) == number);
    }
    if (const std::optional<float> single = toSingle(text)) {
        FUZZ_CHECK(std::isfinite(*single));
        FUZZ_CHECK(toSingle(fromSingle(*single)) == single);
    }
    if (const std::optional<bool> flag = toBoolean(text)) {
        FUZZ_CHECK(toBoolean(fromBoolean(*flag)) == flag);
    }
    return 0;
}
