#include "tessara/backend/ContentDecoder.h"

#include <QList>
#include <algorithm>
#include <brotli/decode.h>
#include <vector>
#include <zlib.h>

namespace tessara {

namespace {

constexpr int kChunk = 64 * 1024;

// Decoded bytes, taken chunk by chunk up to the limit, so a bomb stops within one chunk of
// it. They are kept in fixed blocks rather than one growing array: growing would copy (the
// old and the new array both resident), and a bomb stopped at the limit would have cost
// about twice the limit.
class LimitedOutput {
public:
    // False, keeping nothing of these bytes, when they would pass the limit.
    bool append(const char* data, size_t size) {
        const auto count = static_cast<qsizetype>(size);
        if (size_ + count > ContentDecoder::MAX_DECODED_BODY_BYTES)
            return false;
        if (blocks_.empty() || blocks_.back().size() + count > kBlock) {
            blocks_.emplace_back();
            blocks_.back().reserve(std::max(kBlock, count));
        }
        blocks_.back().append(data, count);
        size_ += count;
        return true;
    }

    QByteArray take() {
        if (blocks_.size() == 1)
            return std::move(blocks_.front());
        QByteArray all;
        all.reserve(size_);
        for (QByteArray& block : blocks_) {
            all.append(block);
            block = QByteArray();
        }
        return all;
    }

private:
    static constexpr qsizetype kBlock = 1024 * 1024;
    std::vector<QByteArray> blocks_;
    qsizetype size_ = 0;
};

// windowBits selects the wrapper: 16+15 gzip, 15 zlib, -15 raw deflate. `overLimit` tells
// a refused size from corrupt bytes.
std::optional<QByteArray> runInflate(const QByteArray& body, int windowBits, bool* overLimit = nullptr) {
    z_stream stream{};
    if (inflateInit2(&stream, windowBits) != Z_OK)
        return std::nullopt;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(body.constData()));
    stream.avail_in = static_cast<uInt>(body.size());
    LimitedOutput out;
    int status = Z_OK;
    char buffer[kChunk];
    while (status == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*>(buffer);
        stream.avail_out = kChunk;
        status = ::inflate(&stream, Z_NO_FLUSH);
        if (status != Z_OK && status != Z_STREAM_END)
            break;
        if (!out.append(buffer, kChunk - stream.avail_out)) {
            if (overLimit)
                *overLimit = true;
            status = Z_DATA_ERROR;
            break;
        }
        // A gzip body may hold several members back to back; read them all.
        if (status == Z_STREAM_END && windowBits > 15 && stream.avail_in > 0) {
            if (inflateReset(&stream) != Z_OK)
                break;
            status = Z_OK;
        }
    }
    inflateEnd(&stream);
    if (status != Z_STREAM_END)
        return std::nullopt;
    return out.take();
}

} // namespace

std::optional<QByteArray> ContentDecoder::gunzip(const QByteArray& body) {
    return runInflate(body, 16 + MAX_WBITS);
}

std::optional<QByteArray> ContentDecoder::inflate(const QByteArray& body) {
    // "deflate" is meant to be zlib-wrapped, but servers send raw deflate often enough
    // that both are accepted; the zlib header's checksum tells them apart.
    bool overLimit = false;
    if (auto zlib = runInflate(body, MAX_WBITS, &overLimit))
        return zlib;
    if (overLimit)
        return std::nullopt;
    return runInflate(body, -MAX_WBITS);
}

std::optional<QByteArray> ContentDecoder::unbrotli(const QByteArray& body) {
    BrotliDecoderState* state = BrotliDecoderCreateInstance(nullptr, nullptr, nullptr);
    if (!state)
        return std::nullopt;
    size_t availableIn = static_cast<size_t>(body.size());
    const auto* nextIn = reinterpret_cast<const uint8_t*>(body.constData());
    LimitedOutput out;
    uint8_t buffer[kChunk];
    BrotliDecoderResult result = BROTLI_DECODER_RESULT_NEEDS_MORE_OUTPUT;
    while (result == BROTLI_DECODER_RESULT_NEEDS_MORE_OUTPUT) {
        size_t availableOut = kChunk;
        uint8_t* nextOut = buffer;
        result =
            BrotliDecoderDecompressStream(state, &availableIn, &nextIn, &availableOut, &nextOut, nullptr);
        if (!out.append(reinterpret_cast<const char*>(buffer), kChunk - availableOut)) {
            result = BROTLI_DECODER_RESULT_ERROR;
            break;
        }
    }
    BrotliDecoderDestroyInstance(state);
    // Trailing bytes after the end of the stream mean the body is not what it says.
    if (result != BROTLI_DECODER_RESULT_SUCCESS || availableIn != 0)
        return std::nullopt;
    return out.take();
}

std::optional<QByteArray> ContentDecoder::decode(const QByteArray& body, const QByteArray& contentEncoding) {
    if (body.size() > MAX_DECODED_BODY_BYTES)
        return std::nullopt;
    QList<QByteArray> codings;
    for (const QByteArray& part : contentEncoding.split(',')) {
        const QByteArray coding = part.trimmed().toLower();
        if (!coding.isEmpty())
            codings.append(coding);
    }
    std::optional<QByteArray> data = body;
    for (auto it = codings.crbegin(); it != codings.crend() && data; ++it) {
        if (*it == "identity")
            continue;
        if (*it == "gzip" || *it == "x-gzip")
            data = gunzip(*data);
        else if (*it == "deflate")
            data = inflate(*data);
        else if (*it == "br")
            data = unbrotli(*data);
        else
            return std::nullopt;
    }
    return data;
}

} // namespace tessara
