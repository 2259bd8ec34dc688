#pragma once

namespace zentoria {

class ImageList;

// The design's images: the tree's folders and drives, and the menu items' images keyed "MP3",
// "Help" and "Exit"; each the desktop theme's icon, else the style's own.
void fillDesignImages(ImageList& tree, ImageList& menu);

} // namespace zentoria
