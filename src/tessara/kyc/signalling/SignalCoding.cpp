#include "tessara/kyc/signalling/SignalCoding.h"

#include "tessara/platform/FatalError.h"

#include <charconv>
#include <cmath>

namespace tessara {

namespace {

// JSON has no NaN or infinity, so such a value makes the whole encoding fail.
template <typename T> void writeNumber(JsonWriter& writer, T value) {
    if (!std::isfinite(value)) {
        writer.invalidate();
        return;
    }
    char buffer[64];
    // The shortest text that reads back as the same value of T, so a float keeps its short form.
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
    writer.writeDecimal(*Decimal::fromString(std::string_view(buffer, size_t(written.ptr - buffer))));
}

} // namespace

template <typename T> std::optional<T> parseNumberText(std::string_view text) {
    T value{};
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, value);
    if (text.empty() || parsed.ec != std::errc() || parsed.ptr != end)
        return std::nullopt;
    return value;
}

template std::optional<double> parseNumberText<double>(std::string_view text);
template std::optional<float> parseNumberText<float>(std::string_view text);

double NumberTextOrZeroCodec::read(JsonValue value) {
    return parseNumberText<double>(JsonReader::readUtf8(value)).value_or(0.0);
}

void NumberTextOrZeroCodec::write(JsonWriter& writer, double value) {
    writeNumber(writer, value);
}

float NumberTextOrFatalCodec::read(JsonValue value) {
    const std::string_view text = JsonReader::readUtf8(value);
    const auto number = parseNumberText<float>(text);
    if (!number)
        fatalError(QStringLiteral("OCR progress value \"%1\" is no number.")
                       .arg(QString::fromUtf8(text.data(), qsizetype(text.size()))));
    return *number;
}

void NumberTextOrFatalCodec::write(JsonWriter& writer, float value) {
    writeNumber(writer, value);
}

} // namespace tessara
