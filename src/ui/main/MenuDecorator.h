#pragma once

#include <QObject>

class QMenuBar;

namespace zentoria {

class ImageList;

// Draws images from an image list beside the menu items of one menu bar, addressed by the items' names.
class MenuDecorator : public QObject {
    Q_OBJECT

public:
    explicit MenuDecorator(QObject* parent = nullptr);

    void setImageList(const ImageList* images) { m_images = images; }
    void attach(const QMenuBar* menuBar) { m_menuBar = menuBar; }
    // Gives the menu item named menuItem the image at the zero-based position; false when there is no
    // such item or image.
    bool setItemImage(const QString& menuItem, int zeroBasedIndex);

private:
    const ImageList* m_images = nullptr;
    const QMenuBar* m_menuBar = nullptr;
};

} // namespace zentoria
