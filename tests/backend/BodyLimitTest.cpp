#include "NetworkTestSupport.h"
#include "support/ContentCoding.h"
#include "tessara/backend/ContentDecoder.h"

#include <QFile>

namespace tessara {
namespace {

using test::CannedResponse;
using test::Capture;
using test::ContentCoding;
using test::NetworkTest;
using Coder = ContentCoding::Coder;

constexpr qint64 kLimit = ContentDecoder::MAX_DECODED_BODY_BYTES;
constexpr qint64 kGiB = qint64(1) << 30;

// Resident-set figures of this process in bytes, from /proc: the high-water mark can be reset,
// so each row measures only its own peak.
qint64 statusField(const char* name) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(int(qstrlen(name))).trimmed().split(' ').front().toLongLong() * 1024;
    }
    return -1;
}

bool resetPeakResidentSet() {
    QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
    return clearRefs.open(QIODevice::WriteOnly) && clearRefs.write("5") == 1;
}

// 64 members of 16 MiB of zeros: a gigabyte from about a megabyte.
QByteArray gzipBomb() {
    return ContentCoding::zeros(Coder::gzip, 16 << 20).repeated(64);
}

// A bomb answer fails as a decoding failure, whatever its coding or status, and the client never
// holds much more than the limit; a body whose bytes alone pass the limit is cut off as it comes.
TEST_F(NetworkTest, BodiesPastTheSizeLimitFailAsDecodingFailures) {
    using Framing = CannedResponse::Framing;
    struct Row {
        const char* name;
        std::function<CannedResponse()> response;
        bool measuresPeak;
    };
    const Row rows[] = {
        {"gzip bomb",
         [] { return CannedResponse::json(200, gzipBomb()).withHeader("Content-Encoding", "gzip"); }, true},
        {"br bomb",
         [] {
             return CannedResponse::json(200, ContentCoding::zeros(Coder::brotli, kGiB))
                 .withHeader("Content-Encoding", "br");
         },
         true},
        {"stacked bomb",
         [] {
             return CannedResponse::json(200, ContentCoding::zlib(gzipBomb()))
                 .withHeader("Content-Encoding", "gzip, deflate");
         },
         true},
        {"bomb as a refusal",
         [] { return CannedResponse::json(400, gzipBomb()).withHeader("Content-Encoding", "gzip"); }, true},
        // Announced far past the limit: refused before the body comes (which here it never does).
        {"announced length past the limit",
         [] {
             return CannedResponse::json(200, "{}")
                 .withFraming(Framing::CloseDelimited)
                 .withHeader("Content-Length", QByteArray::number(kGiB));
         },
         false},
        {"chunked body growing past the limit",
         [] { return CannedResponse::json(200, QByteArray(kLimit + 1, ' ')).withFraming(Framing::Chunked); },
         false},
    };
    const bool canMeasure = resetPeakResidentSet();
    int count = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        server.enqueue(row.response());
        Capture<SubmissionJSON> capture;
        resetPeakResidentSet();
        const qint64 before = statusField("VmRSS:");
        network().loadCurrentStep(QStringLiteral("d-1"), capture.completion());
        ASSERT_TRUE(server.waitForRequests(++count));
        ASSERT_TRUE(capture.wait(30000));
        ASSERT_FALSE(capture.result().isSuccess());
        EXPECT_EQ(capture.error(), TSRError(TSRNetworkError::decodingFailure()));
        if (row.measuresPeak && canMeasure) {
            const qint64 growth = statusField("VmHWM:") - before;
            RecordProperty(row.name, QByteArray::number(growth >> 20).toStdString() + " MiB");
            // The bombs decode to a gigabyte; the decoder keeps no more than the limit, once.
            EXPECT_LT(growth, kLimit * 3 / 2) << (growth >> 20) << " MiB";
        }
    }
    if (!canMeasure)
        GTEST_SKIP() << "/proc/self/clear_refs is not writable: the peak memory was not checked";
}

} // namespace
} // namespace tessara
