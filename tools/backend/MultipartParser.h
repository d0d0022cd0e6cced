#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QPair>
#include <QString>
#include <optional>
#include <vector>

namespace tessara {

// One part of a multipart/form-data body.
struct MultipartPart {
    QByteArray name;                 // the "name" of Content-Disposition
    std::optional<QString> fileName; // the "filename", read as UTF-8
    QByteArray contentType;          // "text/plain" when the part names none
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray data;
};

// Outcome of a parse: the parts, or the reason the body was refused.
struct MultipartParseResult {
    std::vector<MultipartPart> parts;
    std::optional<QString> error;

    bool ok() const { return !error.has_value(); }
    // The first part of that name, or null.
    const MultipartPart* part(QByteArrayView name) const;
};

// Reads multipart/form-data bodies (RFC 7578 on the framing of RFC 2046). Strict about the framing
// (CR LF line ends, a closing delimiter), lenient about what a client may legitimately vary: a
// preamble and an epilogue, white space after a delimiter, header case, quoted or bare parameters.
class MultipartParser {
public:
    // The boundary parameter of a Content-Type header value, or nullopt when the value is not
    // multipart/form-data or carries no usable boundary.
    static std::optional<QByteArray> boundaryFromContentType(QByteArrayView contentType);

    static MultipartParseResult parse(QByteArrayView body, QByteArrayView boundary);
};

} // namespace tessara
