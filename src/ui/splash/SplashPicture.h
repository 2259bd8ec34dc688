#pragma once

class QPainter;

namespace zentoria {

// The splash window's picture, 501 x 333 pixels: the program's name and purpose beside a stack of
// the MP3 file icon, on a light ground. It is drawn rather than loaded, so it is crisp at any scale.
inline constexpr int kSplashPictureWidth = 501;
inline constexpr int kSplashPictureHeight = 333;
void drawSplashPicture(QPainter& painter);

} // namespace zentoria
