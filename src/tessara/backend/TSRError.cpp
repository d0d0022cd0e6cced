#include "tessara/backend/TSRError.h"

#include "tessara/backend/TSRResult.h"
#include "tessara/platform/FatalError.h"

namespace tessara {

QString errorDescription(const TSRError& error) {
    if (const auto* network = networkError(error))
        return network->errorDescription();
    return std::get<TSRBackendError>(error).localizedDescription;
}

void resultMisuse(bool askedForValue) {
    fatalError(askedForValue ? QStringLiteral("Asked for the value of a failed result.")
                             : QStringLiteral("Asked for the error of a successful result."));
}

} // namespace tessara
