#pragma once

#include <QIcon>
#include <QList>
#include <QObject>

namespace zentoria {

// Images addressed by key and by 1-based position, in the order they were added.
class ImageList : public QObject {
    Q_OBJECT

public:
    explicit ImageList(QObject* parent = nullptr);

    // Adds an image; an existing key is replaced in place, keeping its position.
    void add(const QString& key, const QIcon& icon);
    // 1-based position of the key; 0 when there is none.
    int indexOf(const QString& key) const;
    // The image of the key; a null icon when there is none.
    QIcon icon(const QString& key) const;
    // The image at a 1-based position; a null icon outside 1 to count().
    QIcon iconAt(int index) const;
    int count() const { return static_cast<int>(m_images.size()); }

private:
    struct Image {
        QString key;
        QIcon icon;
    };
    QList<Image> m_images;
};

} // namespace zentoria
