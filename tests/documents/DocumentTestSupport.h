#pragma once

#include "support/TestHelpers.h"
#include "tessara/documents/JsonCoding.h"

#include <QByteArray>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

namespace tessara::test {

template <typename T> std::optional<T> decode(const std::string& json) {
    return decodeDocument<T>(QByteArrayView(json.data(), qsizetype(json.size())));
}

inline std::string str(const std::optional<QByteArray>& bytes) {
    return bytes ? bytes->toStdString() : std::string("<encoding failed>");
}

inline bool containsNull(const nlohmann::ordered_json& json) {
    if (json.is_null())
        return true;
    if (json.is_structured())
        for (const auto& element : json)
            if (containsNull(element))
                return true;
    return false;
}

} // namespace tessara::test
