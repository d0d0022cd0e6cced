#pragma once

#include "tessara/kyc/video/VideoFrame.h"

#include <cstdint>
#include <vector>

namespace tessara {

// Draws a plausible camera picture in NV12: for the back camera a document card with a photo box
// and lines of text, for the front camera a face-like shape; a gentle hand motion moves it from
// picture to picture and sensor noise changes every pixel, so the encoder works as on a real
// camera. The scene is drawn once; each picture is a shifted copy with fresh noise.
class SyntheticScene {
public:
    enum class Subject { document, face };

    // `noise` is the largest sensor noise in luma levels (uniform, so about noise / 1.7 rms): 4 is
    // a phone in good light, 12 one in a dim room.
    SyntheticScene(Subject subject, int width, int height, uint32_t seed = 1, int noise = 4);

    // Picture number `index` (motion follows the index, so a given index always looks alike apart
    // from the noise).
    VideoFrame render(int64_t index);

    int width() const { return width_; }
    int height() const { return height_; }

private:
    static constexpr int kMargin = 16; // the furthest the hand moves, in pixels

    void drawDocument();
    void drawFace();
    void fillRect(int x, int y, int w, int h, uint8_t luma, uint8_t u, uint8_t v);
    void fillEllipse(int cx, int cy, int rx, int ry, uint8_t luma, uint8_t u, uint8_t v);

    Subject subject_;
    int width_;
    int height_;
    int canvasWidth_;
    int canvasHeight_;
    std::vector<uint8_t> luma_;   // canvasWidth_ x canvasHeight_
    std::vector<uint8_t> chroma_; // interleaved UV at half resolution
    std::vector<int8_t> noise_;   // a long run of noise, read from a different place each picture
    uint32_t random_;
};

} // namespace tessara
