// A backend that answers only after the time-out: the call ends once, with the time-out, the late
// answer changes nothing, and the next call on the same client works.

#include "NetworkTestSupport.h"

#include <QElapsedTimer>
#include <QMimeDatabase>

namespace tessara {
namespace {

using test::CannedResponse;
using test::NetworkTest;

// What reached a call's completion, in order: the error, or nothing for a success.
using Outcomes = std::shared_ptr<std::vector<std::optional<TSRError>>>;

template <typename T> std::function<void(TSRResult<T>)> recordInto(Outcomes outcomes) {
    return [outcomes](TSRResult<T> result) {
        outcomes->push_back(result.isSuccess() ? std::nullopt : std::optional<TSRError>(result.error()));
    };
}

TEST_F(NetworkTest, AnAnswerAfterTheTimeoutIsIgnoredAndTheNextCallWorks) {
    TSRFile file;
    file.data = "%PDF-1.4";
    file.type = QMimeDatabase().mimeTypeForName(QStringLiteral("application/pdf"));
    file.filename = QStringLiteral("scan.pdf");
    file.filenameAlreadyHasExtension = true;
    const UploadFileDTO dto{QStringLiteral("s-1"), QStringLiteral("doc"), QStringLiteral("d-1")};

    struct Row {
        const char* name;
        CannedResponse answer;
        std::function<void(Outcomes)> call;
    };
    const Row rows[] = {
        {"step", CannedResponse::json(200, R"({"type":"FORM","directionId":"d-1","fields":[]})"),
         [](Outcomes o) {
             TSRNetwork::shared().loadCurrentStep(QStringLiteral("d-1"), recordInto<SubmissionJSON>(o));
         }},
        {"upload", CannedResponse::noBody(200),
         [&](Outcomes o) { TSRNetwork::shared().uploadFile(file, dto, recordInto<void>(o)); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        network().setTimeoutInterval(0.3);
        CannedResponse late = row.answer;
        server.enqueue(late.afterMs(800));
        auto first = std::make_shared<std::vector<std::optional<TSRError>>>();
        QElapsedTimer clock;
        clock.start();
        row.call(first);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !first->empty(); }, 3000));
        EXPECT_LT(clock.elapsed(), 800);
        EXPECT_EQ(first->front(), std::optional<TSRError>(TSRNetworkError::timeout()));

        // The late answer reaches a transfer that is over.
        QTest::qWait(int(std::max<qint64>(0, 1100 - clock.elapsed())));
        EXPECT_EQ(first->size(), 1u) << "one completion, whatever comes later";

        network().setTimeoutInterval(TSRNetwork::TIMEOUT_INTERVAL_FOR_REQUEST);
        server.enqueue(row.answer);
        auto next = std::make_shared<std::vector<std::optional<TSRError>>>();
        row.call(next);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !next->empty(); }, 3000));
        EXPECT_EQ(next->front(), std::nullopt);
        EXPECT_EQ(first->size(), 1u);
        server.closeAllConnections();
        // Let the client see the close: an upload is never re-sent, so one that went out on a
        // connection already closed by the server would fail with a lost connection instead.
        QTest::qWait(200);
    }
}

} // namespace
} // namespace tessara
