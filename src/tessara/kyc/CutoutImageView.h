#pragma once

#include <QImage>
#include <QWidget>

namespace tessara {

// An image view that fills its whole area with its image, keeping the image's shape and cutting
// off what overflows (aspect fill). It lets touches through.
class CutoutImageView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString imageName READ imageName)
public:
    explicit CutoutImageView(QWidget* parent = nullptr);

    void setImage(const QImage& image);
    const QImage& image() const { return image_; }
    // The resource name the image was made from; empty without an image.
    QString imageName() const { return image_.text(QStringLiteral("name")); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage image_;
};

} // namespace tessara
