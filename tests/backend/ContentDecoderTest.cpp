#include "tessara/backend/ContentDecoder.h"

#include "support/ContentCoding.h"

#include <functional>
#include <gtest/gtest.h>

namespace tessara {
namespace {

using test::ContentCoding;

QByteArray sample() {
    QByteArray text;
    for (int i = 0; i < 5000; ++i)
        text += "{\"key\":\"поле " + QByteArray::number(i) + "\"},";
    return text;
}

TEST(ContentDecoder, UndoesEveryCodingTheClientAsksFor) {
    const QByteArray plain = sample();
    struct Row {
        const char* coding;
        QByteArray body;
    };
    const Row rows[] = {
        {"", plain},
        {"identity", plain},
        {"gzip", ContentCoding::gzip(plain)},
        {"x-gzip", ContentCoding::gzip(plain)},
        {"GZIP", ContentCoding::gzip(plain)},
        {"deflate", ContentCoding::zlib(plain)},
        {"deflate", ContentCoding::rawDeflate(plain)},
        {"br", ContentCoding::brotli(plain)},
        // Listed in the order applied: undone from the last.
        {"gzip, br", ContentCoding::brotli(ContentCoding::gzip(plain))},
        {"deflate,identity, gzip", ContentCoding::gzip(ContentCoding::zlib(plain))},
        {"gzip", ContentCoding::gzip(plain.left(10)) + ContentCoding::gzip(plain.mid(10))},
    };
    for (const Row& row : rows) {
        const auto decoded = ContentDecoder::decode(row.body, row.coding);
        ASSERT_TRUE(decoded.has_value()) << row.coding;
        EXPECT_EQ(*decoded, plain) << row.coding;
    }
}

TEST(ContentDecoder, RefusesCorruptTruncatedOrUnknownBodies) {
    const QByteArray plain = sample();
    struct Row {
        const char* coding;
        QByteArray body;
    };
    const Row rows[] = {
        {"gzip", plain},
        {"gzip", ContentCoding::gzip(plain).chopped(20)},
        {"deflate", plain},
        {"deflate", ContentCoding::zlib(plain).left(30)},
        {"br", plain},
        {"br", ContentCoding::brotli(plain).chopped(5)},
        {"br", ContentCoding::brotli(plain) + "trailing"},
        {"compress", plain},
        {"gzip", QByteArray()},
    };
    for (const Row& row : rows)
        EXPECT_FALSE(ContentDecoder::decode(row.body, row.coding).has_value())
            << row.coding << " " << row.body.size();
}

constexpr qint64 kLimit = ContentDecoder::MAX_DECODED_BODY_BYTES;

// Bodies of zeros decoding to exactly the limit pass, one byte more fails, for every coding and
// however the bytes are split into gzip members or layers: the limit holds at each layer.
TEST(ContentDecoder, RefusesBodiesThatDecodePastTheLimit) {
    using Coder = ContentCoding::Coder;
    const auto zeros = [](Coder coder, qint64 size) { return ContentCoding::zeros(coder, size); };
    struct Row {
        const char* name;
        const char* coding;
        std::function<QByteArray()> body;
        bool decodes;
    };
    const Row rows[] = {
        {"identity at the limit", "", [] { return QByteArray(kLimit, '\0'); }, true},
        {"identity past it", "identity", [] { return QByteArray(kLimit + 1, '\0'); }, false},
        {"gzip at the limit", "gzip", [&] { return zeros(Coder::gzip, kLimit); }, true},
        {"gzip past it", "gzip", [&] { return zeros(Coder::gzip, kLimit + 1); }, false},
        {"zlib at the limit", "deflate", [&] { return zeros(Coder::zlib, kLimit); }, true},
        {"zlib past it", "deflate", [&] { return zeros(Coder::zlib, kLimit + 1); }, false},
        {"raw deflate at the limit", "deflate", [&] { return zeros(Coder::rawDeflate, kLimit); }, true},
        {"raw deflate past it", "deflate", [&] { return zeros(Coder::rawDeflate, kLimit + 1); }, false},
        {"br at the limit", "br", [&] { return zeros(Coder::brotli, kLimit); }, true},
        {"br past it", "br", [&] { return zeros(Coder::brotli, kLimit + 1); }, false},
        {"gzip members adding up past it", "gzip",
         [&] { return zeros(Coder::gzip, kLimit / 2) + zeros(Coder::gzip, kLimit / 2 + 1); }, false},
        // 64 members of 16 MiB: a gigabyte from about a megabyte.
        {"gzip member bomb", "gzip", [&] { return zeros(Coder::gzip, 16 << 20).repeated(64); }, false},
        {"stacked at the limit", "br, gzip",
         [&] { return ContentCoding::gzip(zeros(Coder::brotli, kLimit)); }, true},
        // The outer layer stays small; only the inner one explodes.
        {"stacked bomb", "gzip, gzip",
         [&] { return ContentCoding::gzip(zeros(Coder::gzip, 16 << 20).repeated(64)); }, false},
    };
    for (const Row& row : rows) {
        const auto decoded = ContentDecoder::decode(row.body(), row.coding);
        ASSERT_EQ(decoded.has_value(), row.decodes) << row.name;
        if (decoded) {
            EXPECT_EQ(decoded->size(), kLimit) << row.name;
        }
    }
}

} // namespace
} // namespace tessara
