#include "tessara/documents/JsonWriter.h"

#include <charconv>

namespace tessara {

namespace {
constexpr char kHex[] = "0123456789abcdef";
}

void JsonWriter::key(std::string_view name) {
    separate();
    m_out.append('"');
    appendEscaped(name);
    m_out.append("\":", 2);
    m_needsComma = false;
}

void JsonWriter::appendEscaped(std::string_view utf8) {
    size_t runStart = 0;
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c >= 0x20 && c != '"' && c != '\\')
            continue;
        m_out.append(utf8.data() + runStart, qsizetype(i - runStart));
        runStart = i + 1;
        switch (c) {
        case '"':
            m_out.append("\\\"", 2);
            break;
        case '\\':
            m_out.append("\\\\", 2);
            break;
        case '\b':
            m_out.append("\\b", 2);
            break;
        case '\f':
            m_out.append("\\f", 2);
            break;
        case '\n':
            m_out.append("\\n", 2);
            break;
        case '\r':
            m_out.append("\\r", 2);
            break;
        case '\t':
            m_out.append("\\t", 2);
            break;
        default: {
            const char escape[6] = {'\\', 'u', '0', '0', kHex[c >> 4], kHex[c & 0xf]};
            m_out.append(escape, 6);
        }
        }
    }
    m_out.append(utf8.data() + runStart, qsizetype(utf8.size() - runStart));
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
    m_out.append('"');
    appendEscaped(text);
    m_out.append('"');
    m_needsComma = true;
}

void JsonWriter::writeBool(bool value) {
    separate();
    m_out.append(value ? "true" : "false");
    m_needsComma = true;
}

void JsonWriter::writeNull() {
    separate();
    m_out.append("null", 4);
    m_needsComma = true;
}

void JsonWriter::writeInt64(qint64 value) {
    separate();
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    m_out.append(buffer, qsizetype(result.ptr - buffer));
    m_needsComma = true;
}

void JsonWriter::writeUInt64(quint64 value) {
    separate();
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    m_out.append(buffer, qsizetype(result.ptr - buffer));
    m_needsComma = true;
}

void JsonWriter::writeDecimal(const Decimal& value) {
    separate();
    const std::string text = value.toStdString();
    m_out.append(text.data(), qsizetype(text.size()));
    m_needsComma = true;
}

std::optional<QByteArray> JsonWriter::take() {
    if (!m_valid)
        return std::nullopt;
    return std::move(m_out);
}

} // namespace tessara
