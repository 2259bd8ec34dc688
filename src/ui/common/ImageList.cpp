#include "ImageList.h"

namespace zentoria {

ImageList::ImageList(QObject* parent)
    : QObject(parent) {}

void ImageList::add(const QString& key, const QIcon& icon) {
    if (const int index = indexOf(key)) {
        m_images[index - 1].icon = icon;
    } else {
        m_images.append({key, icon});
    }
}

int ImageList::indexOf(const QString& key) const {
    for (qsizetype i = 0; i < m_images.size(); ++i) {
        if (m_images[i].key == key) {
            return static_cast<int>(i + 1);
        }
    }
    return 0;
}

QIcon ImageList::icon(const QString& key) const {
    return iconAt(indexOf(key));
}

QIcon ImageList::iconAt(int index) const {
    return index >= 1 && index <= count() ? m_images[index - 1].icon : QIcon();
}

} // namespace zentoria
