#include "backend/BackendResponse.h"

#include <nlohmann/json.hpp>

namespace tessara {

BackendResponse BackendResponse::fromJson(const nlohmann::json& value, int status) {
    // Texts come from QString, so they are valid UTF-8; "replace" only guards against a lone
    // surrogate turning an answer into an exception.
    return {status,
            QByteArray::fromStdString(value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace))};
}

BackendResponse BackendResponse::error(int status, const QString& message) {
    return fromJson(nlohmann::json{{"message", message.toStdString()}}, status);
}

} // namespace tessara
