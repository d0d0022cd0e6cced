#include "NetworkTestSupport.h"
#include "support/ContentCoding.h"

#include <QMimeDatabase>
#include <QThread>
#include <chrono>

namespace tessara {
namespace {

using test::CannedResponse;
using test::Capture;
using test::ContentCoding;
using test::NetworkTest;

const QByteArray kStep = R"({"type":"FORM","name":"Лични данни","fields":[],"directionId":"d-2"})";

using Framing = CannedResponse::Framing;

TEST_F(NetworkTest, HeadersGoOutInOrderWithTheirValues) {
    server.setDefaultResponse(CannedResponse::json(200, kStep));
    network().loadCurrentStep(QStringLiteral("d-1"), [](auto) {});
    network().submitStep({QStringLiteral("s"), QStringLiteral("d"), std::nullopt, std::nullopt, {}},
                         [](auto) {});
    const TSRFile file{QByteArray("x"), QMimeDatabase().mimeTypeForName(QStringLiteral("text/plain")),
                       QStringLiteral("a.txt"), true};
    network().uploadFile(file, {QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("d")}, [](auto) {});
    ASSERT_TRUE(server.waitForRequests(3));
    const QList<QByteArray> ours{"Accept", "Accept-Encoding", "Accept-Language", "User-Agent",
                                 "Content-Type"};
    for (int i = 0; i < 3; ++i) {
        const auto& request = server.requests()[i];
        QList<QByteArray> seen;
        for (const QByteArray& name : request.headerNames()) {
            if (ours.contains(name))
                seen.append(name);
        }
        // Requests without a body send no Content-Type.
        EXPECT_EQ(seen, request.method == "GET" ? ours.mid(0, 4) : ours) << request.raw.constData();
        if (request.method == "GET") {
            EXPECT_TRUE(request.body.isEmpty());
        }
        if (request.path() == "/step/uploadFile") {
            EXPECT_TRUE(request.header("Content-Type")
                            .startsWith("multipart/form-data; boundary=----TessaraFormBoundary"));
        }
        EXPECT_EQ(request.header("Accept"), "application/json");
        EXPECT_EQ(request.header("Accept-Encoding"), "gzip, deflate, br");
        EXPECT_EQ(request.header("Accept-Language"), network().preferredLocalisation().toUtf8());
        EXPECT_EQ(request.header("User-Agent"), network().userAgent().toUtf8());
        EXPECT_FALSE(request.hasHeader("Authorization"));
    }
}

TEST_F(NetworkTest, EveryEndpointUsesItsMethodAndPathUnderTheBasePath) {
    network().setInstanceURL(server.url(QStringLiteral("/tenant/api?tenant=7")));
    server.setDefaultResponse(CannedResponse::json(200, "{}"));
    const TSRFile file{QByteArray("x"), QMimeDatabase().mimeTypeForName(QStringLiteral("text/plain")),
                       QStringLiteral("a.txt"), true};
    struct Row {
        std::function<void()> call;
        QByteArray method;
        QByteArray target;
    };
    auto ignore = [](auto) {};
    const std::vector<Row> rows = {
        {[&] {
             network().createSubmission({QStringLiteral("p"), std::nullopt}, ignore);
         },
         "POST", "/tenant/api/submission"},
        {[&] { network().loadCurrentStep(QStringLiteral("d/7"), ignore); }, "GET",
         "/tenant/api/step/direction/d/7/current"},
        {[&] { network().loadSection(QStringLiteral("s 1"), QStringLiteral("addr"), ignore); }, "GET",
         "/tenant/api/step/s%201/addr"},
        {[&] {
             network().submitStep({QStringLiteral("s"), QStringLiteral("d"), std::nullopt, std::nullopt, {}},
                                  ignore);
         },
         "POST", "/tenant/api/step"},
        {[&] {
             network().uploadFile(file, {QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("d")},
                                  ignore);
         },
         "POST", "/tenant/api/step/uploadFile"},
        {[&] { network().fetchCreditProducts(ignore); }, "GET", "/tenant/api/custom/credit/products"},
        {[&] {
             network().fetchInstalmentDetails({1, Decimal::fromInteger(100), 3}, ignore);
         },
         "POST", "/tenant/api/custom/credit/installmentDetails"},
        {[&] { network().requestKYCStatus(QStringLiteral("s-1"), QStringLiteral("h#1"), ignore); }, "GET",
         "/tenant/api/step/v3/status/kyc/s-1/h%231"},
    };
    int count = 0;
    for (const Row& row : rows) {
        row.call();
        ASSERT_TRUE(server.waitForRequests(++count)) << row.target.constData();
        EXPECT_EQ(server.requests().back().method, row.method);
        EXPECT_EQ(server.requests().back().target, row.target);
    }
}

TEST_F(NetworkTest, InstalmentDatesAskWithTheProductAndThePresentMoment) {
    using namespace std::chrono;
    server.enqueue(
        CannedResponse::json(200, R"({"productId":"42","availableDates":["2026-02-01","2026-01-05"]})"));
    const double before = duration<double>(system_clock::now().time_since_epoch()).count();
    Capture<CreditInstalmentDatesJSON> capture;
    network().fetchInstalmentDates(42, capture.completion());
    ASSERT_TRUE(server.waitForRequests(1));
    const double after = duration<double>(system_clock::now().time_since_epoch()).count();
    const auto items = server.requests()[0].queryItems();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0], (QPair<QString, QString>{QStringLiteral("productId"), QStringLiteral("42")}));
    EXPECT_EQ(items[1].first, QStringLiteral("preferedDate"));
    bool ok = false;
    const double sent = items[1].second.toDouble(&ok);
    EXPECT_TRUE(ok && sent >= before && sent <= after) << items[1].second.toStdString();
    EXPECT_TRUE(items[1].second.contains(QLatin1Char('.')));
    ASSERT_TRUE(capture.wait());
    ASSERT_TRUE(capture.result().isSuccess());
    EXPECT_EQ(capture.result().value().availableDates.front(), QDate(2026, 1, 5));
}

// What a typed call delivers for each answer a backend can give.
TEST_F(NetworkTest, TypedCallsFollowTheResultTableOnTheWire) {
    const QByteArray message = R"({"message":"Невалиден ЕГН"})";
    struct Row {
        const char* name;
        CannedResponse response;
        std::optional<TSRError> error; // absent: the document arrives
        bool silent = false;
    };
    const QString notFoundUrl = server.url(QStringLiteral("/step/direction/d-1/current")).toString();
    std::vector<Row> rows = {
        {"200", CannedResponse::json(200, kStep), std::nullopt},
        {"chunked", CannedResponse::json(200, kStep).withFraming(Framing::Chunked), std::nullopt},
        {"until close", CannedResponse::json(200, kStep).withFraming(Framing::CloseDelimited), std::nullopt},
        {"gzip", CannedResponse::json(200, ContentCoding::gzip(kStep)).withHeader("Content-Encoding", "gzip"),
         std::nullopt},
        {"200 Content-Length 0", CannedResponse::json(200, ""), TSRNetworkError::decodingFailure()},
        {"200 chunked empty", CannedResponse::json(200, "").withFraming(Framing::Chunked),
         TSRNetworkError::decodingFailure()},
        {"200 without body", CannedResponse::noBody(200), TSRNetworkError::requestFailed()},
        {"204", CannedResponse::noBody(204), TSRNetworkError::requestFailed()},
        {"400 gzip message",
         CannedResponse::json(400, ContentCoding::gzip(message)).withHeader("Content-Encoding", "gzip"),
         TSRBackendError{QStringLiteral("Невалиден ЕГН")}},
        {"400 Content-Length 0", CannedResponse::json(400, ""), TSRNetworkError::decodingFailure()},
        {"404 without body", CannedResponse::noBody(404), TSRNetworkError::notFound(notFoundUrl)},
        {"400 without body", CannedResponse::noBody(400), std::nullopt, true},
    };
    int count = 0;
    for (Row& row : rows) {
        SCOPED_TRACE(row.name);
        server.enqueue(row.response);
        Capture<SubmissionJSON> capture;
        network().loadCurrentStep(QStringLiteral("d-1"), capture.completion());
        // Nothing is delivered while the caller is still in the call.
        EXPECT_EQ(capture.calls(), 0);
        ASSERT_TRUE(server.waitForRequests(++count));
        if (row.silent) {
            QTest::qWait(300);
            EXPECT_EQ(capture.calls(), 0);
            continue;
        }
        ASSERT_TRUE(capture.wait());
        EXPECT_TRUE(capture.state->onMainThread);
        if (row.error) {
            ASSERT_FALSE(capture.result().isSuccess());
            EXPECT_EQ(capture.error(), *row.error);
        } else {
            ASSERT_TRUE(capture.result().isSuccess());
            EXPECT_EQ(capture.result().value().name, QStringLiteral("Лични данни"));
        }
        QTest::qWait(20);
        EXPECT_EQ(capture.calls(), 1);
    }
}

TEST_F(NetworkTest, UploadsFollowTheUploadTableOnTheWire) {
    struct Row {
        const char* name;
        CannedResponse response;
        std::optional<TSRError> error; // absent: success
    };
    const QString url = server.url(QStringLiteral("/step/uploadFile")).toString();
    const std::vector<Row> rows = {
        {"200 arbitrary body", CannedResponse::text(200, "<html>stored</html>", "text/html"), std::nullopt},
        {"200 without body", CannedResponse::noBody(200), std::nullopt},
        {"400 without body", CannedResponse::noBody(400), TSRNetworkError::httpCode(400)},
        {"404", CannedResponse::noBody(404), TSRNetworkError::notFound(url)},
        {"500", CannedResponse::json(500, R"({"message":"m"})"), TSRNetworkError::httpCode(500)},
    };
    const TSRFile file{QByteArray("%PDF-1.4"),
                       QMimeDatabase().mimeTypeForName(QStringLiteral("application/pdf")),
                       QStringLiteral("scan"), false};
    int count = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        server.enqueue(row.response);
        Capture<void> capture;
        network().uploadFile(file, {QStringLiteral("s-1"), QStringLiteral("doc"), QStringLiteral("d-1")},
                             capture.completion());
        ASSERT_TRUE(capture.wait());
        ++count;
        EXPECT_TRUE(capture.state->onMainThread);
        ASSERT_EQ(capture.result().isSuccess(), !row.error.has_value());
        if (row.error) {
            EXPECT_EQ(capture.error(), *row.error);
        }
    }
    ASSERT_EQ(server.requestCount(), count);
    const auto parts = server.requests().front().multipartParts();
    ASSERT_TRUE(parts.has_value());
    ASSERT_EQ(parts->size(), 2);
    EXPECT_EQ((*parts)[0].header("Content-Disposition"), "form-data; name=\"file\"; filename=\"scan.PDF\"");
    EXPECT_EQ((*parts)[0].data, "%PDF-1.4");
    EXPECT_EQ((*parts)[1].data, R"({"fromDirectionId":"d-1","key":"doc","submissionId":"s-1"})");
}

TEST_F(NetworkTest, TransportFailuresBecomeTheClientsErrors) {
    struct Row {
        const char* name;
        CannedResponse response;
        TSRNetworkError error;
        double timeout = TSRNetwork::TIMEOUT_INTERVAL_FOR_REQUEST;
    };
    const std::vector<Row> rows = {
        {"closed without a byte", CannedResponse::close(), TSRNetworkError::connectionLost()},
        {"closed in the headers", CannedResponse::json(200, kStep).cutAfterBytes(20),
         TSRNetworkError::connectionLost()},
        {"closed in the body", CannedResponse::json(200, kStep).cutAfterBytes(kStep.size()),
         TSRNetworkError::connectionLost()},
        {"never answered", CannedResponse::neverAnswer(), TSRNetworkError::timeout(), 0.3},
        {"answered after the time-out", CannedResponse::json(200, kStep).afterMs(1500),
         TSRNetworkError::timeout(), 0.3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        network().setTimeoutInterval(row.timeout);
        // Qt sends a request again when a connection dies before an answer, so every
        // attempt gets the same treatment.
        server.setDefaultResponse(row.response);
        Capture<SubmissionJSON> capture;
        network().loadCurrentStep(QStringLiteral("d-1"), capture.completion());
        ASSERT_TRUE(capture.wait());
        ASSERT_FALSE(capture.result().isSuccess());
        EXPECT_EQ(capture.error(), TSRError(row.error));
        EXPECT_TRUE(capture.state->onMainThread);
        server.closeAllConnections();
    }
}

TEST_F(NetworkTest, RedirectsAreFollowedAndAnswersWithoutLocationDelivered) {
    server.setHandler([&](const test::RecordedRequest& request) {
        if (request.path() == "/old/step")
            return CannedResponse::noBody(303).withHeader("Location", "/new/step?from=old");
        if (request.path() == "/moved/step")
            return CannedResponse::noBody(308).withHeader(
                "Location", server.url(QStringLiteral("/new/step")).toString().toUtf8());
        return CannedResponse::json(200, kStep);
    });
    network().setInstanceURL(server.url(QStringLiteral("/old")));
    Capture<SubmissionJSON> seeOther;
    network().submitStep({QStringLiteral("s"), QStringLiteral("d"), std::nullopt, std::nullopt, {}},
                         seeOther.completion());
    ASSERT_TRUE(seeOther.wait());
    EXPECT_TRUE(seeOther.result().isSuccess());
    ASSERT_EQ(server.requestCount(), 2);
    EXPECT_EQ(server.requests()[1].method, "GET");
    EXPECT_EQ(server.requests()[1].target, "/new/step?from=old");
    EXPECT_TRUE(server.requests()[1].body.isEmpty());
    EXPECT_EQ(server.requests()[1].header("User-Agent"), network().userAgent().toUtf8());

    network().setInstanceURL(server.url(QStringLiteral("/moved")));
    Capture<SubmissionJSON> permanent;
    network().submitStep({QStringLiteral("s"), QStringLiteral("d"), std::nullopt, std::nullopt, {}},
                         permanent.completion());
    ASSERT_TRUE(permanent.wait());
    EXPECT_TRUE(permanent.result().isSuccess());
    ASSERT_EQ(server.requestCount(), 4);
    // A 308 repeats the request as it was.
    EXPECT_EQ(server.requests()[3].method, "POST");
    EXPECT_EQ(server.requests()[3].path(), "/new/step");
    EXPECT_EQ(server.requests()[3].body, server.requests()[2].body);
    EXPECT_EQ(server.requests()[3].header("Content-Type"), "application/json");
}

TEST_F(NetworkTest, ARefusedConnectionKeepsTheTransportsWords) {
    quint16 closedPort = 0;
    {
        test::LoopbackHttpServer gone;
        closedPort = gone.port();
    }
    network().setInstanceURL(QUrl(QStringLiteral("http://127.0.0.1:%1").arg(closedPort)));
    Capture<SubmissionJSON> capture;
    network().loadCurrentStep(QStringLiteral("d-1"), capture.completion());
    ASSERT_TRUE(capture.wait());
    const auto* error = networkError(capture.error());
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), TSRNetworkError::Kind::custom);
    EXPECT_FALSE(error->text().isEmpty());
}

TEST_F(NetworkTest, ACallersOwnCancelIsNoTimeoutAndAnUnstartedCallHasNoReply) {
    server.enqueue(CannedResponse::neverAnswer());
    Capture<KYCStatusJSON> capture;
    const QPointer<QNetworkReply> reply =
        network().requestKYCStatus(QStringLiteral("s"), QStringLiteral("h"), capture.completion());
    ASSERT_TRUE(reply);
    ASSERT_TRUE(server.waitForRequests(1));
    reply->abort();
    ASSERT_TRUE(capture.wait());
    const auto* error = networkError(capture.error());
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), TSRNetworkError::Kind::custom);
    // A call that never starts has no reply to cancel.
    network().setInstanceURL(QUrl(QStringLiteral("ftp://nowhere")));
    Capture<KYCStatusJSON> refused;
    EXPECT_FALSE(network().requestKYCStatus(QStringLiteral("s"), QStringLiteral("h"), refused.completion()));
    EXPECT_EQ(refused.calls(), 1);
}

using NetworkDeathTest = NetworkTest;

TEST_F(NetworkDeathTest, AnEmptySectionListEndsTheProgram) {
    EXPECT_DEATH(
        {
            server.enqueue(CannedResponse::json(200, "[]"));
            network().loadSection(QStringLiteral("s-1"), QStringLiteral("address"), [](auto) {});
            QTest::qWait(5000);
        },
        "holds no step document");
}

TEST_F(NetworkTest, ImmediateFailuresArriveOnTheCallingThread) {
    // An unusable base URL: delivered inside the call, no transfer.
    network().setInstanceURL(QUrl(QStringLiteral("mailto:someone@example.bg")));
    Capture<SubmissionJSON> invalid;
    network().loadCurrentStep(QStringLiteral("d"), invalid.completion());
    EXPECT_EQ(invalid.calls(), 1);
    EXPECT_EQ(invalid.error(), TSRError(TSRNetworkError::invalidURL()));

    // A record that cannot be encoded: also inside the call.
    network().setInstanceURL(server.url());
    Capture<SubmissionJSON> unencodable;
    network().submitStep({QString(QChar(0xDC00)), QStringLiteral("d"), std::nullopt, std::nullopt, {}},
                         unencodable.completion());
    EXPECT_EQ(unencodable.calls(), 1);
    EXPECT_EQ(unencodable.error(), TSRError(TSRNetworkError::encodingFailure()));
    QTest::qWait(50);
    EXPECT_EQ(server.requestCount(), 0);

    // From a worker thread: the immediate failure stays there, a transfer's result comes to main.
    server.enqueue(CannedResponse::json(200, kStep));
    Capture<SubmissionJSON> fromWorker;
    Capture<SubmissionJSON> invalidFromWorker;
    bool invalidOnWorker = false;
    std::unique_ptr<QThread> worker(QThread::create([&] {
        network().loadCurrentStep(QStringLiteral("d"), fromWorker.completion());
        network().setInstanceURL(QUrl(QStringLiteral("ftp://x")));
        network().loadCurrentStep(QStringLiteral("d"), invalidFromWorker.completion());
        invalidOnWorker = invalidFromWorker.calls() == 1 && !invalidFromWorker.state->onMainThread;
    }));
    worker->start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return worker->isFinished(); }, 5000));
    EXPECT_TRUE(invalidOnWorker);
    ASSERT_TRUE(fromWorker.wait());
    EXPECT_TRUE(fromWorker.state->onMainThread);
    EXPECT_TRUE(fromWorker.result().isSuccess());
}

} // namespace
} // namespace tessara
