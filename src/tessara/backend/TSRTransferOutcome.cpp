#include "tessara/backend/TSRTransferOutcome.h"

#include "tessara/backend/ContentDecoder.h"

namespace tessara {

bool TSRTransferOutcome::hasBody(int statusCode, bool headRequest, bool hasContentLength, bool chunked,
                                 qsizetype bytes) {
    if (headRequest || (statusCode >= 100 && statusCode < 200) || statusCode == 204 || statusCode == 304)
        return false;
    return hasContentLength || chunked || bytes > 0;
}

std::optional<QByteArray> TSRTransferOutcome::decodedBody() const {
    if (!body || bodyOverLimit)
        return std::nullopt;
    return ContentDecoder::decode(*body, contentEncoding);
}

} // namespace tessara
