#pragma once

#include "tessara/kyc/video/H264Encoder.h"
#include "tessara/kyc/video/VideoFrame.h"

#include <QByteArray>
#include <QList>
#include <cmath>
#include <memory>
#include <vector>
#include <wels/codec_api.h>

namespace tessara::testing {

inline int unitType(const QByteArray& message) {
    return message.size() > 4 ? (uint8_t(message[4]) & 0x1f) : -1;
}

// A decoded picture, planes copied out of the decoder.
struct DecodedPicture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> y, u, v;
};

// The receiving side: OpenH264's decoder fed one picture's messages at a time.
class StreamDecoder {
public:
    StreamDecoder() {
        WelsCreateDecoder(&decoder_);
        SDecodingParam param{};
        param.sVideoProperty.eVideoBsType = VIDEO_BITSTREAM_AVC;
        param.eEcActiveIdc = ERROR_CON_DISABLE;
        decoder_->Initialize(&param);
    }
    ~StreamDecoder() {
        decoder_->Uninitialize();
        WelsDestroyDecoder(decoder_);
    }

    // Decodes the messages of one picture; false when nothing came out.
    bool decode(const QList<QByteArray>& messages, DecodedPicture& out) {
        QByteArray access;
        for (const QByteArray& m : messages)
            access += m;
        unsigned char* planes[3] = {};
        SBufferInfo info{};
        const DECODING_STATE state = decoder_->DecodeFrameNoDelay(
            reinterpret_cast<const unsigned char*>(access.constData()), int(access.size()), planes, &info);
        if (state != dsErrorFree || info.iBufferStatus != 1)
            return false;
        const auto& s = info.UsrData.sSystemBuffer;
        out.width = s.iWidth;
        out.height = s.iHeight;
        out.y.resize(size_t(s.iWidth) * s.iHeight);
        out.u.resize(size_t(s.iWidth / 2) * (s.iHeight / 2));
        out.v.resize(out.u.size());
        for (int r = 0; r < s.iHeight; ++r)
            memcpy(&out.y[size_t(r) * s.iWidth], planes[0] + size_t(r) * s.iStride[0], size_t(s.iWidth));
        for (int r = 0; r < s.iHeight / 2; ++r) {
            memcpy(&out.u[size_t(r) * (s.iWidth / 2)], planes[1] + size_t(r) * s.iStride[1],
                   size_t(s.iWidth / 2));
            memcpy(&out.v[size_t(r) * (s.iWidth / 2)], planes[2] + size_t(r) * s.iStride[1],
                   size_t(s.iWidth / 2));
        }
        return true;
    }

private:
    ISVCDecoder* decoder_ = nullptr;
};

// Luma PSNR in dB between a decoded picture and rows [top, top + height) of an NV12 frame.
inline double lumaPsnr(const DecodedPicture& decoded, const VideoFrame& source, int top) {
    double squared = 0;
    for (int r = 0; r < decoded.height; ++r)
        for (int c = 0; c < decoded.width; ++c) {
            const double d = double(decoded.y[size_t(r) * decoded.width + c]) -
                             source.planes[0][size_t(r + top) * source.strides[0] + c];
            squared += d * d;
        }
    const double mse = squared / (double(decoded.width) * decoded.height);
    return mse == 0 ? 99.0 : 10.0 * std::log10(255.0 * 255.0 / mse);
}

// Encodes `frame` and returns its messages in order.
inline QList<QByteArray> encodePicture(H264Encoder& encoder, const VideoFrame& frame) {
    QList<QByteArray> messages;
    encoder.naluHandling = [&](QByteArray unit) { messages.append(std::move(unit)); };
    encoder.captureOutput(frame);
    encoder.naluHandling = nullptr;
    return messages;
}

} // namespace tessara::testing
