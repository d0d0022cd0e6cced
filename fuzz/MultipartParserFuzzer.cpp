// The reference backend's reading of an upload. The input's first line is the Content-Type header
// value, the rest the body.

#include "backend/MultipartParser.h"
#include "support/FuzzSupport.h"
#include "tessara/backend/TSRMultipartData.h"

#include <algorithm>

using namespace tessara;

namespace {

// Characters a boundary may hold (RFC 2046 bchars), for which the SDK's writer and the parser
// agree on where a part ends.
bool plainBoundary(QByteArrayView boundary) {
    static constexpr std::string_view kExtra = "'()+_,-./:=? ";
    return !boundary.endsWith(' ') && std::all_of(boundary.begin(), boundary.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               kExtra.find(c) != std::string_view::npos;
    });
}

// A name the SDK's writer puts between quotes unchanged, so the parser must read it back.
bool plainQuotedText(QByteArrayView text) {
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return c == '"' || c == '\r' || c == '\n'; }) &&
           QString::fromUtf8(text).toUtf8() == text;
}

bool writable(const MultipartPart& part) {
    const QByteArray fileName = part.fileName.value_or(QString()).toUtf8();
    return plainQuotedText(part.name) && plainQuotedText(fileName) && plainQuotedText(part.contentType) &&
           part.contentType == part.contentType.trimmed() && !part.contentType.isEmpty();
}

// Writes the parts again with the SDK's own multipart writer; the parser must give them back.
void checkRewrite(const MultipartParseResult& parsed, QByteArrayView boundary) {
    if (!plainBoundary(boundary) || !std::all_of(parsed.parts.begin(), parsed.parts.end(), writable))
        return;
    TSRMultipartData written(QString::fromLatin1(boundary));
    for (const MultipartPart& part : parsed.parts)
        written.addPart(part.data, QString::fromUtf8(part.contentType), QString::fromUtf8(part.name),
                        part.fileName.value_or(QString()));
    written.isFinalized = true;
    const MultipartParseResult again = MultipartParser::parse(written.body(), boundary);
    FUZZ_CHECK(again.ok());
    FUZZ_CHECK(again.parts.size() == parsed.parts.size());
    for (size_t i = 0; i < parsed.parts.size(); ++i) {
        const MultipartPart& before = parsed.parts[i];
        const MultipartPart& after = again.parts[i];
        FUZZ_CHECK(after.name == before.name);
        FUZZ_CHECK(after.data == before.data);
        FUZZ_CHECK(after.contentType == before.contentType);
        FUZZ_CHECK(after.fileName.value_or(QString()) == before.fileName.value_or(QString()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArrayView input = fuzz::bytesOf(data, size);
    const qsizetype newline = input.indexOf('\n');
    if (newline < 0)
        return 0;
    const QByteArrayView header = input.first(newline);
    const QByteArrayView body = input.sliced(newline + 1);
    const std::optional<QByteArray> boundary = MultipartParser::boundaryFromContentType(header);
    if (boundary)
        FUZZ_CHECK(!boundary->isEmpty() && boundary->size() <= 70);
    // Without a usable header the line itself is tried as the boundary, for the parser's own checks.
    const QByteArrayView used = boundary ? QByteArrayView(*boundary) : header;
    const MultipartParseResult parsed = MultipartParser::parse(body, used);
    if (!parsed.ok())
        return 0;
    // Every part's bytes are a piece of the body, and the pieces do not overlap.
    qsizetype total = 0;
    for (const MultipartPart& part : parsed.parts) {
        FUZZ_CHECK(!part.name.isEmpty());
        FUZZ_CHECK(!part.contentType.isEmpty());
        FUZZ_CHECK(body.indexOf(part.data) >= 0);
        total += part.data.size();
    }
    FUZZ_CHECK(total <= body.size());
    checkRewrite(parsed, used);
    return 0;
}
