#pragma once

#include <QByteArray>

namespace tessara::test {

// Compresses test bodies the way servers send them.
struct ContentCoding {
    static QByteArray gzip(const QByteArray& data);
    // "deflate" as the standard means it: zlib header and checksum.
    static QByteArray zlib(const QByteArray& data);
    // "deflate" as some servers send it: the bare stream.
    static QByteArray rawDeflate(const QByteArray& data);
    static QByteArray brotli(const QByteArray& data);

    // `size` zero bytes coded by streaming, without ever holding them: bodies that decode to far
    // more than they weigh. Decompression bombs are built from these.
    enum class Coder { gzip, zlib, rawDeflate, brotli };
    static QByteArray zeros(Coder coder, qint64 size);
};

} // namespace tessara::test
