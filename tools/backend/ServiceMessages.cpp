#include "backend/ServiceMessages.h"

#include <nlohmann/json.hpp>

namespace tessara {

QByteArray ServiceMessages::encode(const SignalMessage& message) {
    const std::optional<QByteArray> bytes = encodeSignalMessage(message);
    if (!bytes)
        return {};
    nlohmann::ordered_json object = nlohmann::ordered_json::parse(bytes->begin(), bytes->end());
    for (auto& value : object) {
        if (value.is_number())
            value = value.dump();
    }
    return QByteArray::fromStdString(object.dump());
}

} // namespace tessara
