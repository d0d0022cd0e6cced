#include "support/ContentCoding.h"

#include <algorithm>
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

constexpr qint64 kZeroChunk = 1024 * 1024;

QByteArray deflateZeros(qint64 size, int windowBits) {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, windowBits, 9, Z_DEFAULT_STRATEGY);
    const QByteArray zeros(kZeroChunk, '\0');
    QByteArray out;
    char buffer[64 * 1024];
    for (qint64 left = size;;) {
        const qint64 take = std::min(left, kZeroChunk);
        left -= take;
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.constData()));
        stream.avail_in = static_cast<uInt>(take);
        const int flush = left == 0 ? Z_FINISH : Z_NO_FLUSH;
        int status = Z_OK;
        do {
            stream.next_out = reinterpret_cast<Bytef*>(buffer);
            stream.avail_out = sizeof buffer;
            status = deflate(&stream, flush);
            out.append(buffer, static_cast<qsizetype>(sizeof buffer - stream.avail_out));
        } while (stream.avail_out == 0 || (flush == Z_FINISH && status != Z_STREAM_END));
        if (left == 0)
            break;
    }
    deflateEnd(&stream);
    return out;
}

QByteArray brotliZeros(qint64 size) {
    BrotliEncoderState* state = BrotliEncoderCreateInstance(nullptr, nullptr, nullptr);
    // A low quality keeps building large bombs quick; runs of zeros shrink well at any quality.
    BrotliEncoderSetParameter(state, BROTLI_PARAM_QUALITY, 1);
    BrotliEncoderSetParameter(state, BROTLI_PARAM_SIZE_HINT, 0);
    const QByteArray zeros(kZeroChunk, '\0');
    QByteArray out;
    for (qint64 left = size;;) {
        const qint64 take = std::min(left, kZeroChunk);
        left -= take;
        size_t availableIn = static_cast<size_t>(take);
        const auto* nextIn = reinterpret_cast<const uint8_t*>(zeros.constData());
        const BrotliEncoderOperation op = left == 0 ? BROTLI_OPERATION_FINISH : BROTLI_OPERATION_PROCESS;
        do {
            size_t availableOut = 0;
            BrotliEncoderCompressStream(state, op, &availableIn, &nextIn, &availableOut, nullptr, nullptr);
            size_t produced = 0;
            const uint8_t* bytes = BrotliEncoderTakeOutput(state, &produced);
            out.append(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(produced));
        } while (availableIn > 0 || BrotliEncoderHasMoreOutput(state) ||
                 (op == BROTLI_OPERATION_FINISH && !BrotliEncoderIsFinished(state)));
        if (left == 0)
            break;
    }
    BrotliEncoderDestroyInstance(state);
    return out;
}

} // namespace

QByteArray ContentCoding::zeros(Coder coder, qint64 size) {
    switch (coder) {
    case Coder::gzip:
        return deflateZeros(size, 16 + MAX_WBITS);
    case Coder::zlib:
        return deflateZeros(size, MAX_WBITS);
    case Coder::rawDeflate:
        return deflateZeros(size, -MAX_WBITS);
    case Coder::brotli:
        return brotliZeros(size);
    }
    return {};
}

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
