#include "tessara/documents/JsonReader.h"

#include <limits>

namespace tessara {

QString JsonReader::readString(JsonValue value) {
    const std::string_view text = readUtf8(value);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

std::string_view JsonReader::readUtf8(JsonValue value) {
    if (required(value).kind() != JsonDom::Kind::string)
        fail();
    return value.text();
}

bool JsonReader::readBool(JsonValue value) {
    if (required(value).kind() != JsonDom::Kind::boolean)
        fail();
    return value.boolean();
}

qint64 JsonReader::readInt64(JsonValue value) {
    switch (required(value).kind()) {
    case JsonDom::Kind::integer:
        return value.integer();
    case JsonDom::Kind::number: {
        const auto decimal = Decimal::fromString(value.text());
        if (!decimal)
            fail();
        const auto whole = decimal->toInt64();
        if (!whole)
            fail();
        return *whole;
    }
    default:
        fail();
    }
}

quint64 JsonReader::readUInt64(JsonValue value) {
    switch (required(value).kind()) {
    case JsonDom::Kind::integer:
        if (value.integer() < 0)
            fail();
        return quint64(value.integer());
    case JsonDom::Kind::unsignedInteger:
        return value.unsignedInteger();
    case JsonDom::Kind::number: {
        const auto decimal = Decimal::fromString(value.text());
        if (!decimal)
            fail();
        const auto whole = decimal->toUInt64();
        if (!whole)
            fail();
        return *whole;
    }
    default:
        fail();
    }
}

Decimal JsonReader::readDecimal(JsonValue value) {
    switch (required(value).kind()) {
    case JsonDom::Kind::integer:
        return Decimal::fromInteger(value.integer());
    case JsonDom::Kind::unsignedInteger:
        return Decimal::fromInteger(qint64(value.unsignedInteger() / 10)) * Decimal::fromInteger(10) +
               Decimal::fromInteger(qint64(value.unsignedInteger() % 10));
    case JsonDom::Kind::number: {
        const auto decimal = Decimal::fromString(value.text());
        if (!decimal)
            fail();
        return *decimal;
    }
    default:
        fail();
    }
}

} // namespace tessara
