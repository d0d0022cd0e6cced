#include "NetworkTestSupport.h"
#include "tessara/backend/TSRError.h"

namespace tessara {
namespace {

TEST(ErrorWords, EveryErrorHasItsFixedWords) {
    struct Row {
        TSRError error;
        QString words;
    };
    const Row rows[] = {
        {TSRNetworkError::custom(QStringLiteral("Няма връзка")), QStringLiteral("Няма връзка")},
        {TSRNetworkError::notFound(QStringLiteral("http://h/x%20y")),
         QStringLiteral("URL not found: http://h/x%20y")},
        {TSRNetworkError::httpCode(503), QStringLiteral("HTTP 503")},
        {TSRNetworkError::invalidURL(), QStringLiteral("The URL is invalid.")},
        {TSRNetworkError::requestFailed(), QStringLiteral("The request failed.")},
        {TSRNetworkError::decodingFailure(), QStringLiteral("JSON decoding failed.")},
        {TSRNetworkError::encodingFailure(), QStringLiteral("JSON encoding failed.")},
        {TSRNetworkError::timeout(), QStringLiteral("The request timed out.")},
        {TSRNetworkError::connectionLost(), QStringLiteral("The network connection was lost.")},
        {TSRBackendError{QStringLiteral("Невалиден ЕГН")}, QStringLiteral("Невалиден ЕГН")},
    };
    for (const Row& row : rows)
        EXPECT_EQ(errorDescription(row.error), row.words);
}

TEST(ErrorWords, BackendErrorNeedsAStringMessage) {
    struct Row {
        const char* body;
        std::optional<QString> message;
    };
    const Row rows[] = {
        {R"({"message":"Грешен код"})", QStringLiteral("Грешен код")},
        {R"({"code":7,"message":"x","timestamp":"2026-01-01T00:00:00.000Z"})", QStringLiteral("x")},
        {R"({"message":""})", QString()},
        {R"({"error":"x"})", std::nullopt},
        {R"({"message":7})", std::nullopt},
        {R"({"message":null})", std::nullopt},
        {R"(["message"])", std::nullopt},
        {"", std::nullopt},
        {"<html>Bad Request</html>", std::nullopt},
    };
    for (const Row& row : rows) {
        const auto decoded = TSRBackendError::decode(QByteArrayView(row.body));
        ASSERT_EQ(decoded.has_value(), row.message.has_value()) << row.body;
        if (decoded) {
            EXPECT_EQ(decoded->localizedDescription, *row.message);
        }
    }
}

TEST(ErrorWordsDeathTest, ReadingTheMissingSideOfAResultEndsTheProgram) {
    const TSRResult<int> failure(TSRNetworkError::timeout());
    EXPECT_DEATH((void)failure.value(), "Asked for the value of a failed result");
    const TSRResult<int> success(3);
    EXPECT_DEATH((void)success.error(), "Asked for the error of a successful result");
}

} // namespace
} // namespace tessara
