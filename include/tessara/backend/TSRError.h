#pragma once

#include "tessara/backend/TSRBackendError.h"
#include "tessara/backend/TSRNetworkError.h"

#include <QString>
#include <variant>

namespace tessara {

/// What a backend call can fail with: the client's own error, or the backend's refusal.
using TSRError = std::variant<TSRNetworkError, TSRBackendError>;

/// The words a user sees for either kind: the client's fixed texts, or the backend's
/// "message" unchanged.
QString errorDescription(const TSRError& error);

/// The client error inside `error`, or null when it is the backend's.
inline const TSRNetworkError* networkError(const TSRError& error) {
    return std::get_if<TSRNetworkError>(&error);
}

/// The backend error inside `error`, or null when it is the client's.
inline const TSRBackendError* backendError(const TSRError& error) {
    return std::get_if<TSRBackendError>(&error);
}

} // namespace tessara
