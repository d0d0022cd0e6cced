#include "tessara/kyc/FramePicture.h"

#include <algorithm>

namespace tessara {

namespace {

// Video-range BT.601, in 16.16 fixed point.
QRgb rgbOf(int y, int u, int v) {
    const int c = (y - 16) * 76309;
    const int d = u - 128;
    const int e = v - 128;
    auto clamp = [](int value) { return std::clamp(value >> 16, 0, 255); };
    return qRgb(clamp(c + 104597 * e), clamp(c - 25674 * d - 53278 * e), clamp(c + 132201 * d));
}

struct Sampler {
    const VideoFrame& frame;

    QRgb at(int x, int y) const {
        const int luma = frame.planes[0][y * frame.strides[0] + x];
        if (frame.layout == VideoFrame::Layout::nv12) {
            const uint8_t* uv = frame.planes[1] + (y / 2) * frame.strides[1] + (x / 2) * 2;
            return rgbOf(luma, uv[0], uv[1]);
        }
        const int u = frame.planes[1][(y / 2) * frame.strides[1] + x / 2];
        const int v = frame.planes[2][(y / 2) * frame.strides[2] + x / 2];
        return rgbOf(luma, u, v);
    }
};

} // namespace

QImage FramePicture::render(const VideoFrame& frame, bool portrait, int rotation, QSize target,
                            bool mirrored) {
    if (frame.isEmpty() || target.isEmpty())
        return {};
    const int turn = portrait ? 0 : ((rotation % 360) + 360) % 360;
    const bool quarter = turn % 180 != 0;
    const int uprightWidth = quarter ? frame.height : frame.width;
    const int uprightHeight = quarter ? frame.width : frame.height;

    const double scale =
        std::max(double(target.width()) / uprightWidth, double(target.height()) / uprightHeight);
    const double left = (uprightWidth - target.width() / scale) / 2.0;
    const double top = (uprightHeight - target.height() / scale) / 2.0;

    QImage picture(target, QImage::Format_RGB32);
    const Sampler sampler{frame};
    for (int y = 0; y < target.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        const int v = std::clamp(int(top + (y + 0.5) / scale), 0, uprightHeight - 1);
        for (int x = 0; x < target.width(); ++x) {
            int u = std::clamp(int(left + (x + 0.5) / scale), 0, uprightWidth - 1);
            if (mirrored)
                u = uprightWidth - 1 - u;
            // Upright (u, v) back to the frame's own pixel, turning clockwise by `turn`.
            int sx = u, sy = v;
            if (turn == 90) {
                sx = v;
                sy = frame.height - 1 - u;
            } else if (turn == 180) {
                sx = frame.width - 1 - u;
                sy = frame.height - 1 - v;
            } else if (turn == 270) {
                sx = frame.width - 1 - v;
                sy = u;
            }
            line[x] = sampler.at(sx, sy);
        }
    }
    return picture;
}

} // namespace tessara
