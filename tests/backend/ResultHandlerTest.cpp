#include "NetworkTestSupport.h"
#include "support/ContentCoding.h"
#include "tessara/backend/StepResultHandler.h"
#include "tessara/backend/TransportErrorMap.h"
#include "tessara/backend/UploadResultHandler.h"
#include "tessara/documents/SubmissionJSON.h"

namespace tessara {
namespace {

using test::ContentCoding;

const QByteArray kDocument = R"({"type":"FORM","fields":[]})";
const QString kUrl = QStringLiteral("http://127.0.0.1:1/api/step/a%20b");

TSRTransferOutcome response(int status, std::optional<QByteArray> body, QByteArray coding = {}) {
    TSRTransferOutcome outcome;
    outcome.statusCode = status;
    outcome.body = std::move(body);
    outcome.contentEncoding = std::move(coding);
    outcome.url = kUrl;
    return outcome;
}

// A body cut off for passing the size limit while it arrived.
TSRTransferOutcome overLimit(int status) {
    TSRTransferOutcome outcome = response(status, QByteArray());
    outcome.bodyOverLimit = true;
    return outcome;
}

TSRTransferOutcome failure(TSRNetworkError error) {
    TSRTransferOutcome outcome;
    outcome.transportError = std::move(error);
    outcome.url = kUrl;
    return outcome;
}

// Expected result of a row: a document, an error, or no call at all.
struct Expect {
    enum { Document, Error, Silence } kind;
    std::optional<TSRError> error = std::nullopt;
};
const Expect kDocumentExpected{Expect::Document};
const Expect kSilence{Expect::Silence};
Expect error(TSRError e) {
    return {Expect::Error, std::move(e)};
}

TEST(StepResultHandler, MapsEveryOutcomeByTheTypedTable) {
    struct Row {
        const char* name;
        TSRTransferOutcome outcome;
        Expect expected;
    };
    const std::vector<Row> rows = {
        {"transport failure passes through", failure(TSRNetworkError::connectionLost()),
         error(TSRNetworkError::connectionLost())},
        {"200 document", response(200, kDocument), kDocumentExpected},
        {"201 document", response(201, kDocument), kDocumentExpected},
        {"302 document", response(302, kDocument), kDocumentExpected},
        {"500 document is a success", response(500, kDocument), kDocumentExpected},
        {"500 non-document", response(500, QByteArray("Internal error")),
         error(TSRNetworkError::decodingFailure())},
        {"200 empty body is present", response(200, QByteArray()), error(TSRNetworkError::decodingFailure())},
        {"200 without body", response(200, std::nullopt), error(TSRNetworkError::requestFailed())},
        {"200 document without fields", response(200, QByteArray(R"({"type":"FORM"})")),
         error(TSRNetworkError::decodingFailure())},
        {"400 message", response(400, QByteArray(R"({"message":"Невалидни данни"})")),
         error(TSRBackendError{QStringLiteral("Невалидни данни")})},
        {"400 without message", response(400, QByteArray(R"({"error":"x"})")),
         error(TSRNetworkError::decodingFailure())},
        {"400 empty body", response(400, QByteArray()), error(TSRNetworkError::decodingFailure())},
        {"400 without body stays silent", response(400, std::nullopt), kSilence},
        {"404 with document", response(404, kDocument), error(TSRNetworkError::notFound(kUrl))},
        {"404 without body", response(404, std::nullopt), error(TSRNetworkError::notFound(kUrl))},
        {"gzip document", response(200, ContentCoding::gzip(kDocument), "gzip"), kDocumentExpected},
        {"br message on 400", response(400, ContentCoding::brotli(R"({"message":"m"})"), "br"),
         error(TSRBackendError{QStringLiteral("m")})},
        {"claims gzip, is plain", response(200, kDocument, "gzip"),
         error(TSRNetworkError::decodingFailure())},
        {"unknown coding", response(200, kDocument, "compress"), error(TSRNetworkError::decodingFailure())},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto result = StepResultHandler::handle<SubmissionJSON>(row.outcome);
        switch (row.expected.kind) {
        case Expect::Silence:
            EXPECT_FALSE(result.has_value());
            break;
        case Expect::Document:
            ASSERT_TRUE(result.has_value());
            ASSERT_TRUE(result->isSuccess());
            EXPECT_EQ(result->value().type, QStringLiteral("FORM"));
            break;
        case Expect::Error:
            ASSERT_TRUE(result.has_value());
            ASSERT_FALSE(result->isSuccess());
            EXPECT_EQ(result->error(), *row.expected.error);
            break;
        }
    }
}

TEST(UploadResultHandler, MapsEveryOutcomeByTheUploadTable) {
    struct Row {
        const char* name;
        TSRTransferOutcome outcome;
        std::optional<TSRError> expected; // absent: success
    };
    const std::vector<Row> rows = {
        {"transport failure", failure(TSRNetworkError::timeout()), TSRNetworkError::timeout()},
        {"200 arbitrary body", response(200, QByteArray("<html>ok</html>")), std::nullopt},
        {"201 without body", response(201, std::nullopt), std::nullopt},
        {"302", response(302, std::nullopt), std::nullopt},
        {"399", response(399, QByteArray("x")), std::nullopt},
        {"600", response(600, QByteArray("x")), std::nullopt},
        {"400 message", response(400, QByteArray(R"({"message":"Файлът е твърде голям"})")),
         TSRBackendError{QStringLiteral("Файлът е твърде голям")}},
        {"400 non-message", response(400, QByteArray("oops")), TSRNetworkError::decodingFailure()},
        {"400 empty body is present", response(400, QByteArray()), TSRNetworkError::decodingFailure()},
        {"400 without body", response(400, std::nullopt), TSRNetworkError::httpCode(400)},
        {"404", response(404, QByteArray(R"({"message":"m"})")), TSRNetworkError::notFound(kUrl)},
        {"401", response(401, QByteArray(R"({"message":"m"})")), TSRNetworkError::httpCode(401)},
        {"413", response(413, std::nullopt), TSRNetworkError::httpCode(413)},
        {"500", response(500, QByteArray()), TSRNetworkError::httpCode(500)},
        {"599", response(599, std::nullopt), TSRNetworkError::httpCode(599)},
        // The answer to a good upload is never read, so its size does not matter.
        {"200 body past the limit", overLimit(200), std::nullopt},
        {"400 body past the limit", overLimit(400), TSRNetworkError::decodingFailure()},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto result = UploadResultHandler::handle(row.outcome);
        ASSERT_EQ(result.isSuccess(), !row.expected.has_value());
        if (row.expected) {
            EXPECT_EQ(result.error(), *row.expected);
        }
    }
}

TEST(TransferOutcome, BodyPresenceFollowsTheFraming) {
    struct Row {
        int status;
        bool head;
        bool contentLength;
        bool chunked;
        qsizetype bytes;
        bool present;
    };
    const Row rows[] = {
        {200, false, true, false, 0, true},   // Content-Length: 0 announces an empty body
        {200, false, false, true, 0, true},   // chunked with only the last chunk
        {200, false, false, false, 5, true},  // read until the connection closed
        {200, false, false, false, 0, false}, // nothing announced, nothing came
        {400, false, false, false, 0, false}, {204, false, true, false, 0, false},
        {304, false, true, false, 0, false},  {101, false, false, false, 0, false},
        {200, true, true, false, 0, false}, // HEAD answers never have one
    };
    for (const Row& row : rows) {
        EXPECT_EQ(
            TSRTransferOutcome::hasBody(row.status, row.head, row.contentLength, row.chunked, row.bytes),
            row.present)
            << row.status << " head=" << row.head << " length=" << row.contentLength
            << " chunked=" << row.chunked << " bytes=" << row.bytes;
    }
}

TEST(TransportErrorMap, MapsQtFailuresToTheClientsErrors) {
    const QString words = QStringLiteral("Qt words");
    struct Row {
        QNetworkReply::NetworkError code;
        bool timedOut;
        TSRNetworkError expected;
    };
    const Row rows[] = {
        {QNetworkReply::UnknownNetworkError, false, TSRNetworkError::requestFailed()},
        {QNetworkReply::RemoteHostClosedError, false, TSRNetworkError::connectionLost()},
        {QNetworkReply::TemporaryNetworkFailureError, false, TSRNetworkError::connectionLost()},
        {QNetworkReply::NetworkSessionFailedError, false, TSRNetworkError::connectionLost()},
        {QNetworkReply::ContentReSendError, false, TSRNetworkError::connectionLost()},
        {QNetworkReply::TimeoutError, false, TSRNetworkError::timeout()},
        {QNetworkReply::ProxyTimeoutError, false, TSRNetworkError::timeout()},
        {QNetworkReply::OperationCanceledError, true, TSRNetworkError::timeout()},
        {QNetworkReply::OperationCanceledError, false, TSRNetworkError::custom(words)},
        {QNetworkReply::ConnectionRefusedError, false, TSRNetworkError::custom(words)},
        {QNetworkReply::HostNotFoundError, false, TSRNetworkError::custom(words)},
        {QNetworkReply::SslHandshakeFailedError, false, TSRNetworkError::custom(words)},
    };
    for (const Row& row : rows)
        EXPECT_EQ(TransportErrorMap::map(row.code, row.timedOut, words), row.expected) << row.code;
}

TEST(TransportErrorMap, OnlyConnectionFailuresHideTheStatus) {
    EXPECT_TRUE(TransportErrorMap::isTransportFailure(QNetworkReply::RemoteHostClosedError));
    EXPECT_TRUE(TransportErrorMap::isTransportFailure(QNetworkReply::ProxyConnectionRefusedError));
    EXPECT_TRUE(TransportErrorMap::isTransportFailure(QNetworkReply::ContentReSendError));
    // Qt turns statuses into these; the status itself decides then.
    EXPECT_FALSE(TransportErrorMap::isTransportFailure(QNetworkReply::NoError));
    EXPECT_FALSE(TransportErrorMap::isTransportFailure(QNetworkReply::ContentNotFoundError));
    EXPECT_FALSE(TransportErrorMap::isTransportFailure(QNetworkReply::ProtocolInvalidOperationError));
    EXPECT_FALSE(TransportErrorMap::isTransportFailure(QNetworkReply::InternalServerError));
}

TEST(StepResultHandlerDeathTest, ATransferWithNeitherResponseNorErrorEndsTheProgram) {
    TSRTransferOutcome outcome;
    EXPECT_DEATH(StepResultHandler::decide(outcome), "neither a response nor an error");
}

} // namespace
} // namespace tessara
