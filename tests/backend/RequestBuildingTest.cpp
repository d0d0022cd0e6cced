#include "NetworkTestSupport.h"
#include "tessara/backend/RedirectRule.h"

#include <QFile>

namespace tessara {
namespace {

TSRHTTPRequest on(const char* base, const QString& path,
                  std::optional<QList<TSRQueryItem>> query = std::nullopt) {
    TSRHTTPRequest request;
    request.baseURL = QUrl(QString::fromUtf8(base));
    request.path = path;
    request.queryItems = std::move(query);
    return request;
}

TEST(RequestBuilding, TransferUrlKeepsSchemeHostPortAndPathOfTheBase) {
    struct Row {
        const char* base;
        QString path;
        const char* expected; // nullptr: no URL can be made
    };
    const Row rows[] = {
        {"http://127.0.0.1:8080", QStringLiteral("/submission"), "http://127.0.0.1:8080/submission"},
        {"https://api.example.bg/tessara/v1", QStringLiteral("/submission"),
         "https://api.example.bg/tessara/v1/submission"},
        {"https://api.example.bg/tessara/v1/", QStringLiteral("/submission"),
         "https://api.example.bg/tessara/v1/submission"},
        // Query, fragment and credentials of the base are dropped.
        {"https://user:pw@api.example.bg:8443/base?tenant=1#top", QStringLiteral("/step"),
         "https://api.example.bg:8443/base/step"},
        // Ids are concatenated as they are: "/" makes segments, the rest is encoded.
        {"http://h", QStringLiteral("/step/direction/a/b/current"), "http://h/step/direction/a/b/current"},
        {"http://h", QStringLiteral("/step/a b?c#d%e/key"), "http://h/step/a%20b%3Fc%23d%25e/key"},
        {"http://h", QStringLiteral("/step/ид"), "http://h/step/%D0%B8%D0%B4"},
        {"ftp://h/base", QStringLiteral("/x"), nullptr},
        {"file:///tmp", QStringLiteral("/x"), nullptr},
        {"localhost:8080", QStringLiteral("/x"), nullptr},
        {"/relative/only", QStringLiteral("/x"), nullptr},
        {"", QStringLiteral("/x"), nullptr},
    };
    for (const Row& row : rows) {
        const auto url = TSRTransport::transferURL(on(row.base, row.path));
        if (!row.expected) {
            EXPECT_FALSE(url.has_value()) << row.base << " -> " << url->toString().toStdString();
            continue;
        }
        ASSERT_TRUE(url.has_value()) << row.base;
        EXPECT_EQ(url->toString(QUrl::FullyEncoded), QString::fromUtf8(row.expected)) << row.base;
    }
}

TEST(RequestBuilding, QueryItemsReplaceTheBaseQueryInOrder) {
    const auto url = TSRTransport::transferURL(
        on("http://h/api?old=1", QStringLiteral("/custom/credit/installmentDates"),
           QList<TSRQueryItem>{{QStringLiteral("productId"), QStringLiteral("12")},
                               {QStringLiteral("preferedDate"), QStringLiteral("1718003200.25")},
                               {QStringLiteral("q"), QStringLiteral("a&b=c d")}}));
    ASSERT_TRUE(url);
    EXPECT_EQ(url->toString(QUrl::FullyEncoded),
              QStringLiteral("http://h/api/custom/credit/"
                             "installmentDates?productId=12&preferedDate=1718003200.25&q=a%26b%3Dc%20d"));
}

TEST(RequestBuilding, RepeatedHeaderFieldsAreCombinedNotReplaced) {
    TSRHTTPRequest request = on("http://h", QStringLiteral("/x"));
    request.addHeader(QStringLiteral("Accept"), QStringLiteral("application/json"));
    request.addHeader(QStringLiteral("X-Trace"), QStringLiteral("1"));
    request.addHeader(QStringLiteral("accept"), QStringLiteral("text/plain"));
    const auto networkRequest = TSRNetwork::shared().transport().makeTransferRequest(request);
    ASSERT_TRUE(networkRequest);
    EXPECT_EQ(networkRequest->rawHeaderList(), (QList<QByteArray>{"Accept", "X-Trace"}));
    EXPECT_EQ(networkRequest->rawHeader("Accept"), QByteArray("application/json, text/plain"));
    EXPECT_EQ(networkRequest->transferTimeout(), 60000);
}

// The compiled-in endpoint, as the build configured it.
QUrl configuredDefaultEndpoint() {
    QFile cache(QStringLiteral(TESSARA_BINARY_DIR "/CMakeCache.txt"));
    if (!cache.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray& line : cache.readAll().split('\n')) {
        if (line.startsWith("TESSARA_DEFAULT_ENDPOINT:"))
            return QUrl(QString::fromUtf8(line.mid(line.indexOf('=') + 1)));
    }
    return {};
}

TEST(RequestBuilding, AbsentInstanceUrlFallsBackToTheDefaultEndpoint) {
    auto& network = TSRNetwork::shared();
    network.setInstanceURL(QUrl(QStringLiteral("https://one.example/api")));
    EXPECT_EQ(network.transport().makeRequest(TSRHTTPMethod::get, QStringLiteral("/x")).baseURL,
              QUrl(QStringLiteral("https://one.example/api")));
    network.setInstanceURL(std::nullopt);
    EXPECT_EQ(network.transport().makeRequest(TSRHTTPMethod::get, QStringLiteral("/x")).baseURL,
              configuredDefaultEndpoint());
    EXPECT_TRUE(configuredDefaultEndpoint().isValid());
}

} // namespace
} // namespace tessara

namespace tessara {
namespace {

TEST(RedirectRule, FollowsOnlyUsableRedirects) {
    const QUrl https(QStringLiteral("https://h/api/step"));
    const QUrl http(QStringLiteral("http://h/api/step"));
    struct Row {
        int status;
        QByteArray verb;
        QByteArray location;
        QUrl current;
        std::optional<RedirectRule::Step> expected;
    };
    const std::vector<Row> rows = {
        {301, "GET", "/v2/step", https,
         RedirectRule::Step{QUrl(QStringLiteral("https://h/v2/step")), "GET", true}},
        {302, "POST", "next", https,
         RedirectRule::Step{QUrl(QStringLiteral("https://h/api/next")), "GET", false}},
        {303, "POST", "https://other/x", https,
         RedirectRule::Step{QUrl(QStringLiteral("https://other/x")), "GET", false}},
        {303, "HEAD", "/x", http, RedirectRule::Step{QUrl(QStringLiteral("http://h/x")), "HEAD", true}},
        {307, "POST", "/x", http, RedirectRule::Step{QUrl(QStringLiteral("http://h/x")), "POST", true}},
        {308, "PUT", "https://h/x", http,
         RedirectRule::Step{QUrl(QStringLiteral("https://h/x")), "PUT", true}},
        {302, "GET", "", https, std::nullopt},
        {302, "GET", "http://h/x", https, std::nullopt},
        {302, "GET", "ftp://h/x", http, std::nullopt},
        {300, "GET", "/x", http, std::nullopt},
        {304, "GET", "/x", http, std::nullopt},
        {200, "GET", "/x", http, std::nullopt},
    };
    for (const Row& row : rows) {
        const auto step = RedirectRule::next(row.status, row.verb, row.location, row.current);
        ASSERT_EQ(step.has_value(), row.expected.has_value())
            << row.status << " " << row.location.constData();
        if (step) {
            EXPECT_EQ(step->url, row.expected->url) << row.status;
            EXPECT_EQ(step->verb, row.expected->verb) << row.status;
            EXPECT_EQ(step->keepsBody, row.expected->keepsBody) << row.status;
        }
    }
}

} // namespace
} // namespace tessara
