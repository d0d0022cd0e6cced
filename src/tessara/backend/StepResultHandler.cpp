#include "tessara/backend/StepResultHandler.h"

#include "tessara/platform/FatalError.h"

namespace tessara {

StepResultHandler::Decision StepResultHandler::decide(const TSRTransferOutcome& outcome) {
    if (!outcome.statusCode) {
        if (!outcome.transportError)
            fatalError(QStringLiteral("A transfer ended with neither a response nor an error."));
        return TSRError(*outcome.transportError);
    }
    const int status = *outcome.statusCode;
    if (status == 400) {
        // A refusal without words leaves the caller waiting; kept as the backend contract has it.
        if (!outcome.body)
            return Silence{};
        const auto bytes = outcome.decodedBody();
        if (!bytes)
            return TSRError(TSRNetworkError::decodingFailure());
        if (auto backend = TSRBackendError::decode(*bytes))
            return TSRError(*backend);
        return TSRError(TSRNetworkError::decodingFailure());
    }
    if (status == 404)
        return TSRError(TSRNetworkError::notFound(outcome.url));
    if (!outcome.body)
        return TSRError(TSRNetworkError::requestFailed());
    if (auto bytes = outcome.decodedBody())
        return *bytes;
    return TSRError(TSRNetworkError::decodingFailure());
}

} // namespace tessara
