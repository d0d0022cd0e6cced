#include "tessara/backend/ContentDecoder.h"

#include "support/ContentCoding.h"

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

} // namespace
} // namespace tessara
