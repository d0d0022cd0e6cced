#pragma once

#include "tessara/documents/Decimal.h"
#include "tessara/documents/JsonDom.h"

#include <QString>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace tessara {

// Thrown by the readers below and caught by decodeDocument; it never leaves the documents code.
struct JsonDecodeFailure {};

// Strict readers for one JSON value: no coercion between JSON types, so a string where a bool is
// expected, or 1.5 where an integer is expected, is a decoding failure.
class JsonReader {
public:
    JsonReader() = delete;

    [[noreturn]] static void fail() { throw JsonDecodeFailure{}; }

    // A present, non-null value; absent or null fails.
    static JsonValue required(JsonValue value) {
        if (value.isAbsentOrNull())
            fail();
        return value;
    }

    static QString readString(JsonValue value);
    static std::string_view readUtf8(JsonValue value);
    static bool readBool(JsonValue value);
    // A whole number in range. A number written with a fraction or an exponent is accepted when
    // its value is whole (1.0, 1e2): backends that serialise through doubles write counts that way.
    static qint64 readInt64(JsonValue value);
    static quint64 readUInt64(JsonValue value);
    static Decimal readDecimal(JsonValue value);

    template <typename T, typename Read> static std::vector<T> readArray(JsonValue value, Read read) {
        if (required(value).kind() != JsonDom::Kind::array)
            fail();
        std::vector<T> result;
        result.reserve(value.size());
        for (JsonValue element : value)
            result.push_back(read(element));
        return result;
    }

    // Finds the members named in `keys` in one pass over the object; a key that is not there gives
    // an invalid JsonValue. Duplicate members: the last wins. Fails when `object` is no object.
    template <size_t N>
    static std::array<JsonValue, N> members(JsonValue object, const std::array<std::string_view, N>& keys) {
        if (required(object).kind() != JsonDom::Kind::object)
            fail();
        std::array<JsonValue, N> found{};
        for (JsonValue member : object) {
            const std::string_view key = member.key();
            for (size_t i = 0; i < N; ++i) {
                if (keys[i].size() == key.size() && keys[i] == key) {
                    found[i] = member;
                    break;
                }
            }
        }
        return found;
    }
};

} // namespace tessara
