#include "Conversions.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace zentoria {

namespace {

// Stored numbers are written in the C locale whatever the user's: "2500.5", never "2500,5".
std::optional<double> toNumber(const QString& text) {
    bool ok = false;
    const double value = QLocale::c().toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace

std::optional<qint32> toInt32(const QString& text) {
    const std::optional<double> number = toNumber(text);
    if (!number) {
        return std::nullopt;
    }
    // nearbyint rounds in the current mode, which is to nearest with ties to even.
    const double rounded = std::nearbyint(*number);
    if (rounded < std::numeric_limits<qint32>::min() || rounded > std::numeric_limits<qint32>::max()) {
        return std::nullopt;
    }
    return static_cast<qint32>(rounded);
}

std::optional<bool> toBoolean(const QString& text) {
    const QString word = text.trimmed();
    if (word.compare(QStringLiteral("True"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    if (word.compare(QStringLiteral("False"), Qt::CaseInsensitive) == 0) {
        return false;
    }
    const std::optional<double> number = toNumber(word);
    if (!number) {
        return std::nullopt;
    }
    return *number != 0.0;
}

std::optional<float> toSingle(const QString& text) {
    const std::optional<double> number = toNumber(text);
    if (!number || std::fabs(*number) > std::numeric_limits<float>::max()) {
        return std::nullopt;
    }
    return static_cast<float>(*number);
}

QString fromInt32(qint32 value) {
    return QString::number(value);
}

QString fromSingle(float value) {
    return QLocale::c().toString(value, 'g', 9);
}

QString fromBoolean(bool value) {
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace zentoria
