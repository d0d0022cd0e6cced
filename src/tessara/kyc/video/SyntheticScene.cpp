#include "tessara/kyc/video/SyntheticScene.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tessara {

namespace {

uint32_t xorshift(uint32_t& state) {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
}

} // namespace

SyntheticScene::SyntheticScene(Subject subject, int width, int height, uint32_t seed, int noise)
    : subject_(subject)
    , width_(width & ~1)
    , height_(height & ~1)
    , canvasWidth_(width_ + 2 * kMargin)
    , canvasHeight_(height_ + 2 * kMargin)
    , luma_(size_t(canvasWidth_) * canvasHeight_)
    , chroma_(size_t(canvasWidth_) * canvasHeight_ / 2)
    , random_(seed ? seed : 1) {
    // A soft vertical gradient as the room behind.
    for (int y = 0; y < canvasHeight_; ++y) {
        const uint8_t level = uint8_t(70 + 50 * y / canvasHeight_);
        memset(&luma_[size_t(y) * canvasWidth_], level, size_t(canvasWidth_));
    }
    for (size_t i = 0; i < chroma_.size(); i += 2) {
        chroma_[i] = 120;
        chroma_[i + 1] = 134;
    }
    if (subject_ == Subject::document)
        drawDocument();
    else
        drawFace();

    // Fine texture (paper grain, skin, wall) that moves with the scene, so motion costs bits as it
    // does on a camera, then sensor noise that changes every picture.
    for (uint8_t& pixel : luma_)
        pixel = uint8_t(std::clamp(int(pixel) + int(xorshift(random_) % 13) - 6, 16, 235));
    noise_.resize(size_t(width_) * 64 + 4096);
    for (int8_t& n : noise_)
        n = int8_t(int(xorshift(random_) % unsigned(2 * noise + 1)) - noise);
}

void SyntheticScene::fillRect(int x, int y, int w, int h, uint8_t luma, uint8_t u, uint8_t v) {
    const int x0 = std::clamp(x, 0, canvasWidth_), x1 = std::clamp(x + w, 0, canvasWidth_);
    const int y0 = std::clamp(y, 0, canvasHeight_), y1 = std::clamp(y + h, 0, canvasHeight_);
    for (int row = y0; row < y1; ++row)
        memset(&luma_[size_t(row) * canvasWidth_ + x0], luma, size_t(std::max(0, x1 - x0)));
    for (int row = y0 / 2; row < y1 / 2; ++row)
        for (int col = x0 / 2; col < x1 / 2; ++col) {
            chroma_[size_t(row) * canvasWidth_ + 2 * col] = u;
            chroma_[size_t(row) * canvasWidth_ + 2 * col + 1] = v;
        }
}

void SyntheticScene::fillEllipse(int cx, int cy, int rx, int ry, uint8_t luma, uint8_t u, uint8_t v) {
    for (int y = std::max(0, cy - ry); y < std::min(canvasHeight_, cy + ry); ++y) {
        const double dy = double(y - cy) / ry;
        const int half = int(rx * std::sqrt(std::max(0.0, 1.0 - dy * dy)));
        const int x0 = std::max(0, cx - half), x1 = std::min(canvasWidth_, cx + half);
        if (x1 <= x0)
            continue;
        memset(&luma_[size_t(y) * canvasWidth_ + x0], luma, size_t(x1 - x0));
        if (y % 2 == 0)
            for (int col = x0 / 2; col < x1 / 2; ++col) {
                chroma_[size_t(y / 2) * canvasWidth_ + 2 * col] = u;
                chroma_[size_t(y / 2) * canvasWidth_ + 2 * col + 1] = v;
            }
    }
}

void SyntheticScene::drawDocument() {
    // An ID-1 card (85.6 x 54 mm) across the middle band, a photo on the left, text on the right.
    const int cardW = canvasWidth_ * 8 / 10;
    const int cardH = cardW * 54 / 86;
    const int cardX = (canvasWidth_ - cardW) / 2;
    const int cardY = (canvasHeight_ - cardH) / 2;
    fillRect(cardX, cardY, cardW, cardH, 205, 118, 128);
    fillRect(cardX + cardW / 20, cardY + cardH / 5, cardW / 4, cardH * 3 / 5, 110, 124, 142);
    fillEllipse(cardX + cardW / 20 + cardW / 8, cardY + cardH * 2 / 5, cardW / 14, cardH / 7, 150, 110, 150);
    uint32_t words = random_;
    const int textX = cardX + cardW * 7 / 20;
    const int lineHeight = std::max(4, cardH / 14);
    for (int line = 0; line < 8; ++line) {
        int x = textX;
        const int y = cardY + cardH / 5 + line * lineHeight * 3 / 2;
        const int end = cardX + cardW - cardW / 20 - (line % 3) * cardW / 10;
        while (x < end) {
            const int word = lineHeight + int(xorshift(words) % unsigned(lineHeight * 4));
            fillRect(x, y, std::min(word, end - x), lineHeight, 40, 128, 128);
            x += word + lineHeight / 2;
        }
    }
}

void SyntheticScene::drawFace() {
    const int cx = canvasWidth_ / 2, cy = canvasHeight_ / 2;
    const int rx = canvasWidth_ / 4, ry = canvasHeight_ * 3 / 10;
    fillEllipse(cx, cy - ry * 9 / 10, rx * 11 / 10, ry / 2, 45, 126, 130);     // hair
    fillEllipse(cx, cy, rx, ry, 165, 112, 150);                                // face
    fillEllipse(cx - rx * 2 / 5, cy - ry / 5, rx / 6, ry / 12, 235, 128, 128); // eyes
    fillEllipse(cx + rx * 2 / 5, cy - ry / 5, rx / 6, ry / 12, 235, 128, 128);
    fillEllipse(cx - rx * 2 / 5, cy - ry / 5, rx / 14, ry / 14, 30, 128, 128);
    fillEllipse(cx + rx * 2 / 5, cy - ry / 5, rx / 14, ry / 14, 30, 128, 128);
    fillEllipse(cx, cy + ry / 10, rx / 10, ry / 6, 140, 114, 152);         // nose
    fillEllipse(cx, cy + ry * 9 / 20, rx * 2 / 5, ry / 14, 110, 110, 170); // mouth
}

VideoFrame SyntheticScene::render(int64_t index) {
    const double t = double(index) / 30.0;
    const int dx = kMargin + int(std::lround((kMargin - 2) * std::sin(t * 1.3)));
    const int dy = (kMargin + int(std::lround((kMargin - 2) * std::cos(t * 0.9)))) & ~1;

    VideoFrame frame = VideoFrame::allocate(VideoFrame::Layout::nv12, width_, height_);
    uint8_t* y = frame.mutablePlane(0);
    const size_t noiseSpan = noise_.size() - size_t(width_);
    for (int row = 0; row < height_; ++row) {
        const uint8_t* src = &luma_[size_t(row + dy) * canvasWidth_ + dx];
        const int8_t* noise = &noise_[xorshift(random_) % noiseSpan];
        uint8_t* dst = y + size_t(row) * width_;
        for (int col = 0; col < width_; ++col)
            dst[col] = uint8_t(std::clamp(src[col] + noise[col], 16, 235));
    }
    uint8_t* uv = frame.mutablePlane(1);
    for (int row = 0; row < height_ / 2; ++row)
        memcpy(uv + size_t(row) * width_, &chroma_[size_t(row + dy / 2) * canvasWidth_ + (dx & ~1)],
               size_t(width_));
    return frame;
}

} // namespace tessara
