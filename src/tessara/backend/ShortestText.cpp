#include "tessara/backend/ShortestText.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace tessara {

namespace {

template <typename Float> QString shortest(Float value, Float exponentFrom) {
    if (std::isnan(value))
        return QStringLiteral("nan");
    if (std::isinf(value))
        return value < 0 ? QStringLiteral("-inf") : QStringLiteral("inf");
    char buffer[64];
    const Float magnitude = std::fabs(value);
    const bool exponent = magnitude != 0 && (magnitude < Float(1e-4) || magnitude >= exponentFrom);
    const auto format = exponent ? std::chars_format::scientific : std::chars_format::fixed;
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value, format);
    std::string_view text(buffer, ec == std::errc() ? static_cast<size_t>(end - buffer) : 0);
    QString result = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    if (!exponent && !result.contains(QLatin1Char('.')))
        result += QStringLiteral(".0");
    return result;
}

} // namespace

QString ShortestText::of(float value) {
    return shortest<float>(value, 16777216.0f);
}

QString ShortestText::of(double value) {
    return shortest<double>(value, 9007199254740992.0);
}

} // namespace tessara
