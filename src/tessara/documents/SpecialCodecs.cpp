#include "tessara/documents/SpecialCodecs.h"

#include "tessara/documents/Parser.h"
#include "tessara/platform/FatalError.h"

#include <algorithm>

namespace tessara {

namespace {

void writeDay(JsonWriter& writer, const QDate& day) {
    if (!day.isValid())
        writer.invalidate();
    writer.writeString(Parser::formatDay(day));
}

} // namespace

QUrl AbsoluteUrlCodec::read(JsonValue value) {
    const QUrl url(JsonReader::readString(value), QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty())
        JsonReader::fail();
    return url;
}

void AbsoluteUrlCodec::write(JsonWriter& writer, const QUrl& value) {
    if (!value.isValid())
        writer.invalidate();
    writer.writeString(value.toString(QUrl::FullyEncoded));
}

std::optional<QDate> DayOrAbsentCodec::read(JsonValue value) {
    return Parser::parseDay(JsonReader::readString(value));
}

void DayOrAbsentCodec::write(JsonWriter& writer, const QDate& value) {
    writeDay(writer, value);
}

std::vector<QDate> AvailableDaysCodec::read(JsonValue value) {
    auto days = JsonReader::readArray<QDate>(value, [](JsonValue element) {
        const QString text = JsonReader::readString(element);
        const auto day = Parser::parseDay(text);
        if (!day)
            fatalError(QStringLiteral("Unable to parse available instalment date \"%1\".").arg(text));
        return *day;
    });
    std::sort(days.begin(), days.end());
    return days;
}

void AvailableDaysCodec::write(JsonWriter& writer, const std::vector<QDate>& values) {
    writer.beginArray();
    for (const QDate& day : values)
        writeDay(writer, day);
    writer.endArray();
}

} // namespace tessara
