#pragma once

// H.264 pictures as the SDK's client sends them: Annex B units, one per message, the parameter sets
// before the key frame. Encoded once per size with OpenH264 and replayed in a loop, which is a valid
// stream because each loop starts at a key frame.

#include <QByteArray>
#include <gtest/gtest.h>
#include <map>
#include <utility>
#include <vector>
#include <wels/codec_api.h>

namespace tessara::testing {

using EncodedPicture = std::vector<QByteArray>; // the units of one picture

inline std::vector<EncodedPicture> encodeGroup(int width, int height, int count) {
    ISVCEncoder* encoder = nullptr;
    if (WelsCreateSVCEncoder(&encoder) != 0 || !encoder) {
        ADD_FAILURE() << "no OpenH264 encoder";
        return {};
    }
    SEncParamExt param;
    encoder->GetDefaultParams(&param);
    param.iUsageType = CAMERA_VIDEO_REAL_TIME;
    param.iPicWidth = width;
    param.iPicHeight = height;
    param.iRCMode = RC_OFF_MODE;
    param.fMaxFrameRate = 30;
    param.iSpatialLayerNum = 1;
    param.iTemporalLayerNum = 1;
    param.uiIntraPeriod = 60;
    param.bEnableSceneChangeDetect = false;
    param.iMultipleThreadIdc = 1;
    param.sSpatialLayers[0].iVideoWidth = width;
    param.sSpatialLayers[0].iVideoHeight = height;
    param.sSpatialLayers[0].fFrameRate = 30;
    param.sSpatialLayers[0].uiProfileIdc = PRO_BASELINE;
    param.sSpatialLayers[0].uiLevelIdc = LEVEL_4_1;
    param.sSpatialLayers[0].iDLayerQp = 30;
    param.sSpatialLayers[0].sSliceArgument.uiSliceMode = SM_SINGLE_SLICE;
    int quiet = WELS_LOG_QUIET;
    encoder->SetOption(ENCODER_OPTION_TRACE_LEVEL, &quiet);
    std::vector<EncodedPicture> pictures;
    if (encoder->InitializeExt(&param) != 0) {
        ADD_FAILURE() << "OpenH264 refuses the parameters";
        WelsDestroySVCEncoder(encoder);
        return pictures;
    }
    std::vector<unsigned char> frame(size_t(width * height * 3 / 2), 128);
    SSourcePicture source{};
    source.iColorFormat = videoFormatI420;
    source.iPicWidth = width;
    source.iPicHeight = height;
    source.iStride[0] = width;
    source.iStride[1] = source.iStride[2] = width / 2;
    source.pData[0] = frame.data();
    source.pData[1] = frame.data() + width * height;
    source.pData[2] = source.pData[1] + width * height / 4;
    for (int i = 0; i < count; ++i) {
        // A bright bar moving down the picture, so every picture has something to code.
        std::fill(frame.begin(), frame.begin() + width * height, 100);
        const int top = (i * 16) % (height - 32);
        std::fill(frame.begin() + top * width, frame.begin() + (top + 32) * width, 220);
        source.uiTimeStamp = i * 33;
        SFrameBSInfo info{};
        if (encoder->EncodeFrame(&source, &info) != cmResultSuccess || info.eFrameType == videoFrameTypeSkip)
            continue;
        EncodedPicture picture;
        for (int layer = 0; layer < info.iLayerNum; ++layer) {
            const SLayerBSInfo& bits = info.sLayerInfo[layer];
            const unsigned char* at = bits.pBsBuf;
            for (int nal = 0; nal < bits.iNalCount; ++nal) {
                picture.emplace_back(reinterpret_cast<const char*>(at), bits.pNalLengthInByte[nal]);
                at += bits.pNalLengthInByte[nal];
            }
        }
        pictures.push_back(std::move(picture));
    }
    encoder->Uninitialize();
    WelsDestroySVCEncoder(encoder);
    return pictures;
}

// A group of 30 pictures of this size, encoded on first use.
inline const std::vector<EncodedPicture>& encodedGroup(int width, int height) {
    static std::map<std::pair<int, int>, std::vector<EncodedPicture>> groups;
    auto& group = groups[{width, height}];
    if (group.empty())
        group = encodeGroup(width, height, 30);
    return group;
}

} // namespace tessara::testing
