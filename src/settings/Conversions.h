#pragma once

#include <QString>

#include <optional>

namespace zentoria {

// Conversions of stored setting texts. Each answers nothing for a text it cannot convert; callers then
// use the setting's default, so a value spoilt by hand or by another tool never stops the program.

// A decimal number rounded to the nearest 32-bit integer, halves to the even one (2500.5 gives 2500,
// 2501.5 gives 2502). Nothing for text that is no number or a number out of range.
std::optional<qint32> toInt32(const QString& text);

// Any number (zero is false, any other true) or the words "True" and "False" in any letter case.
std::optional<bool> toBoolean(const QString& text);

// A decimal number as single precision. Nothing for text that is no number or beyond single range.
std::optional<float> toSingle(const QString& text);

// How the program writes numbers and flags: decimal text, "1" or "0".
QString fromInt32(qint32 value);
QString fromSingle(float value);
QString fromBoolean(bool value);

} // namespace zentoria
