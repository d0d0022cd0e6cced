#pragma once

#include "tessara/documents/Decimal.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <string_view>
#include <vector>

namespace tessara {

// Writes compact JSON. Callers write object members in ascending byte order of their keys, which is
// the wire order. Non-ASCII text goes out as UTF-8 and "/" is not escaped. A value that cannot be
// written (text with an unpaired surrogate) marks the whole output invalid.
class JsonWriter {
public:
    JsonWriter() { out_.reserve(256); }

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    void key(std::string_view name);

    void writeString(const QString& text);
    void writeUtf8String(std::string_view text);
    void writeBool(bool value);
    void writeInt64(qint64 value);
    void writeUInt64(quint64 value);
    void writeDecimal(const Decimal& value);

    void invalidate() { valid_ = false; }
    bool isValid() const { return valid_; }
    // The bytes, or std::nullopt when something could not be written.
    std::optional<QByteArray> take();

private:
    void separate() {
        if (needsComma_)
            out_.append(',');
    }
    void open(char bracket) {
        separate();
        out_.append(bracket);
        needsComma_ = false;
    }
    void close(char bracket) {
        out_.append(bracket);
        needsComma_ = true;
    }
    void appendEscaped(std::string_view utf8);

    QByteArray out_;
    bool needsComma_ = false;
    bool valid_ = true;
};

} // namespace tessara
