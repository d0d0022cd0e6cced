#include "support/ContentCoding.h"

#include <brotli/encode.h>
#include <zlib.h>

namespace tessara::test {

namespace {

QByteArray deflateWith(const QByteArray& data, int windowBits) {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY);
    QByteArray out(static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(data.size())) + 32), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.truncate(static_cast<qsizetype>(stream.total_out));
    deflateEnd(&stream);
    return out;
}

} // namespace

QByteArray ContentCoding::gzip(const QByteArray& data) {
    return deflateWith(data, 16 + MAX_WBITS);
}

QByteArray ContentCoding::zlib(const QByteArray& data) {
    return deflateWith(data, MAX_WBITS);
}

QByteArray ContentCoding::rawDeflate(const QByteArray& data) {
    return deflateWith(data, -MAX_WBITS);
}

QByteArray ContentCoding::brotli(const QByteArray& data) {
    size_t size = BrotliEncoderMaxCompressedSize(static_cast<size_t>(data.size()));
    QByteArray out(static_cast<qsizetype>(size ? size : 64), '\0');
    size = static_cast<size_t>(out.size());
    BrotliEncoderCompress(
        BROTLI_DEFAULT_QUALITY, BROTLI_DEFAULT_WINDOW, BROTLI_MODE_TEXT, static_cast<size_t>(data.size()),
        reinterpret_cast<const uint8_t*>(data.constData()), &size, reinterpret_cast<uint8_t*>(out.data()));
    out.truncate(static_cast<qsizetype>(size));
    return out;
}

} // namespace tessara::test
