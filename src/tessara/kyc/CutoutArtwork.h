#pragma once

#include <QImage>
#include <QString>

namespace tessara {

// The frames that show where the document or the face belongs: a dimmed surround with a clear
// window, outlined in white, or in red when the service finds the picture not good enough. Drawn
// here as vectors, the same shapes as the SVG files kept with the resources; the canvas is 4:3,
// like the preview they cover.
class CutoutArtwork {
public:
    CutoutArtwork() = delete;

    static constexpr int kWidth = 1200;
    static constexpr int kHeight = 900;

    // The image of resource `name` ("id-card-cutout", "id-card-error-cutout", "face-cutout",
    // "face-error-cutout"), with its name in the text key "name"; a null image for any other name.
    static QImage image(const QString& name);
};

} // namespace tessara
