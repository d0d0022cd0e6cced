#include "backend/H264StreamDecoder.h"

#include <wels/codec_api.h>

namespace tessara {

namespace {

constexpr int kNalIdrSlice = 5;
constexpr int kNalSlice = 1;
constexpr int kNalSps = 7;

int startCodeLength(QByteArrayView unit) {
    if (unit.size() >= 4 && unit[0] == 0 && unit[1] == 0 && unit[2] == 0 && unit[3] == 1)
        return 4;
    if (unit.size() >= 3 && unit[0] == 0 && unit[1] == 0 && unit[2] == 1)
        return 3;
    return 0;
}

} // namespace

void H264StreamDecoder::DecoderDeleter::operator()(ISVCDecoder* decoder) const {
    decoder->Uninitialize();
    WelsDestroyDecoder(decoder);
}

H264StreamDecoder::H264StreamDecoder() {
    ISVCDecoder* decoder = nullptr;
    if (WelsCreateDecoder(&decoder) != 0 || !decoder)
        return;
    int quiet = WELS_LOG_QUIET;
    decoder->SetOption(DECODER_OPTION_TRACE_LEVEL, &quiet);
    SDecodingParam param{};
    param.sVideoProperty.size = sizeof(param.sVideoProperty);
    param.sVideoProperty.eVideoBsType = VIDEO_BITSTREAM_AVC;
    // Concealed pictures would count pictures the client never managed to send.
    param.eEcActiveIdc = ERROR_CON_DISABLE;
    if (decoder->Initialize(&param) != 0) {
        WelsDestroyDecoder(decoder);
        return;
    }
    decoder_.reset(decoder);
}

H264StreamDecoder::~H264StreamDecoder() = default;

int H264StreamDecoder::nalType(QByteArrayView unit) {
    const int offset = startCodeLength(unit);
    if (offset == 0 || unit.size() <= offset)
        return -1;
    return uchar(unit[offset]) & 0x1f;
}

H264StreamDecoder::Picture H264StreamDecoder::feed(QByteArrayView unit) {
    Picture picture;
    const int type = nalType(unit);
    if (type < 0 || !decoder_)
        return picture;
    if (type == kNalSps) {
        const int offset = startCodeLength(unit);
        // profile_idc, the constraint flags, then level_idc follow the one-byte NAL header.
        if (unit.size() >= offset + 4) {
            profile_ = uchar(unit[offset + 1]);
            level_ = uchar(unit[offset + 3]);
        }
    } else if (type == kNalIdrSlice || type == kNalSlice) {
        sliceOfKeyFrame_ = type == kNalIdrSlice;
    }

    unsigned char* planes[3] = {nullptr, nullptr, nullptr};
    SBufferInfo info{};
    const DECODING_STATE state = decoder_->DecodeFrameNoDelay(
        reinterpret_cast<const unsigned char*>(unit.data()), int(unit.size()), planes, &info);
    if (state != dsErrorFree || info.iBufferStatus != 1)
        return picture;
    picture.decoded = true;
    picture.width = info.UsrData.sSystemBuffer.iWidth;
    picture.height = info.UsrData.sSystemBuffer.iHeight;
    picture.keyFrame = sliceOfKeyFrame_;
    return picture;
}

} // namespace tessara
