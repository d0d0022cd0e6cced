#pragma once

#include "tessara/kyc/video/VideoFrame.h"

#include <QImage>
#include <QSize>

namespace tessara {

// Turns one camera frame into the picture the preview shows: upright, mirrored when asked, and
// scaled to fill `target` with its centre kept (the parts that do not fit are cut off). Samples
// only the pixels it needs, so a full-size frame costs no more than the small picture.
class FramePicture {
public:
    FramePicture() = delete;

    // `rotation` in degrees turns a sensor frame upright unless `portrait` says it already is.
    static QImage render(const VideoFrame& frame, bool portrait, int rotation, QSize target, bool mirrored);
};

} // namespace tessara
