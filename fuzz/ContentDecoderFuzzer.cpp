// Undoing a response's Content-Encoding. The first byte chooses the header and the mode:
//   raw:        the rest is a body as a server might send it, decoded under the chosen header;
//   round trip: the rest is a plain body, coded here with zlib and brotli under that header, and
//               decoding must give it back exactly.

#include "support/FuzzSupport.h"
#include "tessara/backend/ContentDecoder.h"

#include <QList>
#include <array>
#include <brotli/encode.h>
#include <zlib.h>

using namespace tessara;

namespace {

// Headers as servers write them: single codings, stacks (applied left to right), odd spacing and
// case, and codings the client does not know.
constexpr std::array<const char*, 16> kHeaders = {"gzip",
                                                  "deflate",
                                                  "br",
                                                  "identity",
                                                  "x-gzip",
                                                  "gzip, br",
                                                  "deflate, gzip",
                                                  "br,deflate",
                                                  " GZIP ,br",
                                                  "gzip, gzip",
                                                  "br, br, br",
                                                  "identity, deflate",
                                                  "",
                                                  "compress",
                                                  "gzip, zstd",
                                                  "deflate,,identity"};

std::optional<QByteArray> zlibCode(const QByteArray& plain, int windowBits) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        return std::nullopt;
    QByteArray out(qsizetype(deflateBound(&stream, uLong(plain.size())) + 32), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(plain.constData()));
    stream.avail_in = uInt(plain.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = uInt(out.size());
    const int status = deflate(&stream, Z_FINISH);
    out.truncate(qsizetype(stream.total_out));
    deflateEnd(&stream);
    return status == Z_STREAM_END ? std::optional(out) : std::nullopt;
}

std::optional<QByteArray> brotliCode(const QByteArray& plain) {
    size_t size = BrotliEncoderMaxCompressedSize(size_t(plain.size()));
    QByteArray out(qsizetype(size ? size : 16), '\0');
    size = size_t(out.size());
    if (!BrotliEncoderCompress(1, BROTLI_DEFAULT_WINDOW, BROTLI_MODE_GENERIC, size_t(plain.size()),
                               reinterpret_cast<const uint8_t*>(plain.constData()), &size,
                               reinterpret_cast<uint8_t*>(out.data())))
        return std::nullopt;
    out.truncate(qsizetype(size));
    return out;
}

// Applies the header's codings in the order listed; std::nullopt when one is unknown.
std::optional<QByteArray> code(const QByteArray& plain, const QByteArray& header) {
    std::optional<QByteArray> data = plain;
    for (const QByteArray& part : header.split(',')) {
        const QByteArray coding = part.trimmed().toLower();
        if (!data || coding.isEmpty() || coding == "identity")
            continue;
        if (coding == "gzip" || coding == "x-gzip")
            data = zlibCode(*data, 16 + MAX_WBITS);
        else if (coding == "deflate")
            data = zlibCode(*data, MAX_WBITS);
        else if (coding == "br")
            data = brotliCode(*data);
        else
            return std::nullopt;
    }
    return data;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0)
        return 0;
    const QByteArray header(kHeaders[data[0] % kHeaders.size()]);
    const bool roundTrip = data[0] & 0x80;
    const QByteArray rest = fuzz::bytesOf(data + 1, size - 1).toByteArray();

    if (roundTrip) {
        const std::optional<QByteArray> coded = code(rest, header);
        const std::optional<QByteArray> decoded = ContentDecoder::decode(coded.value_or(rest), header);
        // An unknown coding fails the whole body; known ones give back exactly what was coded.
        FUZZ_CHECK(coded.has_value() == decoded.has_value());
        FUZZ_CHECK(!decoded || *decoded == rest);
        return 0;
    }

    const std::optional<QByteArray> decoded = ContentDecoder::decode(rest, header);
    const QByteArray lower = header.trimmed().toLower();
    if (lower.isEmpty() || lower == "identity")
        FUZZ_CHECK(decoded == rest);
    return 0;
}
