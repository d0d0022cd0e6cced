#include "tessara/backend/TSRError.h"

namespace tessara {

QString errorDescription(const TSRError& error) {
    if (const auto* network = networkError(error))
        return network->errorDescription();
    return std::get<TSRBackendError>(error).localizedDescription;
}

} // namespace tessara
