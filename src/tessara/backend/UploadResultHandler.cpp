#include "tessara/backend/UploadResultHandler.h"

#include "tessara/platform/FatalError.h"

namespace tessara {

TSRResult<void> UploadResultHandler::handle(const TSRTransferOutcome& outcome) {
    if (!outcome.statusCode) {
        if (!outcome.transportError)
            fatalError(QStringLiteral("A transfer ended with neither a response nor an error."));
        return *outcome.transportError;
    }
    const int status = *outcome.statusCode;
    if (status == 400 && outcome.body) {
        const auto bytes = outcome.decodedBody();
        if (bytes) {
            if (auto backend = TSRBackendError::decode(*bytes))
                return *backend;
        }
        return TSRNetworkError::decodingFailure();
    }
    if (status == 404)
        return TSRNetworkError::notFound(outcome.url);
    if (status >= 400 && status <= 599)
        return TSRNetworkError::httpCode(status);
    return TSRResult<void>::success();
}

} // namespace tessara
