#pragma once

namespace zentoria {

// Geometry is reckoned in twips (1/1440 inch) like the report tools this program comes from.
inline constexpr double kTwipsPerInch = 1440.0;

// A rectangle in twips.
struct TwipsRect {
    double Left = 0;
    double Top = 0;
    double Width = 0;
    double Height = 0;
    friend bool operator==(const TwipsRect&, const TwipsRect&) = default;
};

} // namespace zentoria
