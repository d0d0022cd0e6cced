#include "tessara/documents/JsonWriter.h"

#include <charconv>

namespace tessara {

namespace {
constexpr char kHex[] = "0123456789abcdef";
}

void JsonWriter::key(std::string_view name) {
    separate();
    out_.append('"');
    appendEscaped(name);
    out_.append("\":", 2);
    needsComma_ = false;
}

void JsonWriter::appendEscaped(std::string_view utf8) {
    size_t runStart = 0;
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c >= 0x20 && c != '"' && c != '\\')
            continue;
        out_.append(utf8.data() + runStart, qsizetype(i - runStart));
        runStart = i + 1;
        switch (c) {
        case '"':
            out_.append("\\\"", 2);
            break;
        case '\\':
            out_.append("\\\\", 2);
            break;
        case '\b':
            out_.append("\\b", 2);
            break;
        case '\f':
            out_.append("\\f", 2);
            break;
        case '\n':
            out_.append("\\n", 2);
            break;
        case '\r':
            out_.append("\\r", 2);
            break;
        case '\t':
            out_.append("\\t", 2);
            break;
        default: {
            const char escape[6] = {'\\', 'u', '0', '0', kHex[c >> 4], kHex[c & 0xf]};
            out_.append(escape, 6);
        }
        }
    }
    out_.append(utf8.data() + runStart, qsizetype(utf8.size() - runStart));
}

void JsonWriter::writeString(const QString& text) {
    // QString may hold unpaired surrogates, which have no UTF-8 form; refuse rather than guess.
    const qsizetype length = text.size();
    const QChar* chars = text.constData();
    for (qsizetype i = 0; i < length; ++i) {
        if (chars[i].isHighSurrogate() && i + 1 < length && chars[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        if (chars[i].isSurrogate()) {
            invalidate();
            break;
        }
    }
    const QByteArray utf8 = text.toUtf8();
    writeUtf8String(std::string_view(utf8.constData(), size_t(utf8.size())));
}

void JsonWriter::writeUtf8String(std::string_view text) {
    separate();
    out_.append('"');
    appendEscaped(text);
    out_.append('"');
    needsComma_ = true;
}

void JsonWriter::writeBool(bool value) {
    separate();
    out_.append(value ? "true" : "false");
    needsComma_ = true;
}

void JsonWriter::writeInt64(qint64 value) {
    separate();
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out_.append(buffer, qsizetype(result.ptr - buffer));
    needsComma_ = true;
}

void JsonWriter::writeUInt64(quint64 value) {
    separate();
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out_.append(buffer, qsizetype(result.ptr - buffer));
    needsComma_ = true;
}

void JsonWriter::writeDecimal(const Decimal& value) {
    separate();
    const std::string text = value.toStdString();
    out_.append(text.data(), qsizetype(text.size()));
    needsComma_ = true;
}

std::optional<QByteArray> JsonWriter::take() {
    if (!valid_)
        return std::nullopt;
    return std::move(out_);
}

} // namespace tessara
