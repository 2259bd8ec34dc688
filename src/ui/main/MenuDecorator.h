#pragma once

#include <QObject>

class QAction;

namespace zentoria {

class ImageList;

// Draws images from an image list beside menu items.
class MenuDecorator : public QObject {
    Q_OBJECT

public:
    explicit MenuDecorator(QObject* parent = nullptr);

    void setImageList(const ImageList* images) { m_images = images; }
    // Gives the menu item the image at the zero-based position; false when there is no such image.
    bool setItemImage(QAction* menuItem, int zeroBasedIndex);

private:
    const ImageList* m_images = nullptr;
};

} // namespace zentoria
