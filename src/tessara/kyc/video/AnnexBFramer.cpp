#include "tessara/kyc/video/AnnexBFramer.h"

#include <cstring>
#include <wels/codec_app_def.h>

namespace tessara {

namespace {

constexpr char kStartCode[4] = {0, 0, 0, 1};

// Length of the start code at `data` (3 or 4 bytes), 0 when there is none.
int startCodeLength(const uint8_t* data, int length) {
    if (length >= 4 && data[0] == 0 && data[1] == 0 && data[2] == 0 && data[3] == 1)
        return 4;
    if (length >= 3 && data[0] == 0 && data[1] == 0 && data[2] == 1)
        return 3;
    return 0;
}

void emitUnit(const uint8_t* unit, int length, const AnnexBFramer::UnitHandler& handler) {
    QByteArray message(4 + length, Qt::Uninitialized);
    memcpy(message.data(), kStartCode, 4);
    memcpy(message.data() + 4, unit, size_t(length));
    handler(std::move(message));
}

} // namespace

QByteArray AnnexBFramer::startCode() {
    return QByteArray(kStartCode, 4);
}

int AnnexBFramer::emit(const SFrameBSInfo& output, const UnitHandler& handler) {
    if (!handler || output.eFrameType == videoFrameTypeSkip || output.eFrameType == videoFrameTypeInvalid)
        return 0;
    int count = 0;
    for (int l = 0; l < output.iLayerNum; ++l) {
        const SLayerBSInfo& layer = output.sLayerInfo[l];
        const uint8_t* data = layer.pBsBuf;
        // The encoder gives each unit's length with its start code; units follow one another.
        for (int n = 0; n < layer.iNalCount; ++n) {
            const int length = layer.pNalLengthInByte[n];
            const int prefix = startCodeLength(data, length);
            emitUnit(data + prefix, length - prefix, handler);
            data += length;
            ++count;
        }
    }
    return count;
}

} // namespace tessara
