// The endpoints one by one, through the SDK's client: what a host would see from this backend.
#include "ServedSample.h"
#include "backend/WorkingDays.h"
#include "tessara/documents/JsonCoding.h"

#include <QFile>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QWebSocket>
#include <functional>

using namespace tessara;
using namespace tessara::testing;

namespace {

Decimal dec(const char* text) {
    return *Decimal::fromString(std::string_view(text));
}

TSRFile fileOf(QByteArray data, const char* mime, const char* name) {
    return {std::move(data), QMimeDatabase().mimeTypeForName(QLatin1String(mime)), QLatin1String(name), true};
}

// A client call for a table of refusals: the backend's message, or nullopt when not refused so.
template <typename T, typename Call> std::function<std::optional<QString>()> refused(Call call) {
    return [call] { return backendMessage(awaitResult<T>(call)); };
}

} // namespace

using BackendCalls = ServedSample;

TEST_F(BackendCalls, RefusedCallsCarryAMessageTheClientShows) {
    const auto first = start();
    ASSERT_TRUE(first.isSuccess());
    const QString id = *first.value().submissionId;
    auto& client = TSRNetwork::shared();
    const TSRFile pdf = fileOf("%PDF-1.4", "application/pdf", "a.pdf");
    const auto upload = [&](const QString& key, const char* step) {
        return UploadFileDTO{id, key, QLatin1String(step)};
    };

    struct Case {
        const char* name;
        std::function<std::optional<QString>()> call;
        const char* words; // part of the expected message
    };
    const Case cases[] = {
        {"unknown process", [&] { return backendMessage(start(QStringLiteral("no-such-process"))); },
         "Непознат процес: \"no-such-process\""},
        {"unknown submission",
         [&] { return backendMessage(submit(QStringLiteral("nobody"), QStringLiteral("contact-data"), {})); },
         "Непозната заявка: \"nobody\""},
        {"unknown step",
         [&] {
             return backendMessage(submit(id, QStringLiteral("nowhere"), QStringLiteral("personal-data")));
         },
         "Непозната стъпка \"nowhere\""},
        {"unknown section", refused<SubmissionJSON>([&](auto done) {
             client.loadSection(id, QStringLiteral("noSection"), done);
         }),
         "Непозната секция"},
        {"step nobody reached",
         refused<SubmissionJSON>([&](auto done) { client.loadCurrentStep(QStringLiteral("closing"), done); }),
         "Няма заявка, която да е достигнала стъпка \"closing\""},
        {"dates of an unknown product",
         refused<CreditInstalmentDatesJSON>([&](auto done) { client.fetchInstalmentDates(999, done); }),
         "Непознат кредитен продукт: 999"},
        {"amount outside the period's range", refused<CreditInstalmentDetailsJSON>([&](auto done) {
             client.fetchInstalmentDetails(InstalmentDetailsDTO{101, dec("999.99"), 12}, done);
         }),
         "между 1000 и 10000"},
        {"period the product does not offer", refused<CreditInstalmentDetailsJSON>([&](auto done) {
             client.fetchInstalmentDetails(InstalmentDetailsDTO{101, dec("5000"), 7}, done);
         }),
         "не се предлага за 7 вноски"},
        {"status asked with another user's hash", refused<KYCStatusJSON>([&](auto done) {
             client.requestKYCStatus(id, QStringLiteral("0123"), done);
         }),
         "Потребителят не отговаря"},
        {"upload to a field that takes no file", refused<void>([&](auto done) {
             client.uploadFile(pdf, upload(QStringLiteral("egn"), "personal-data"), done);
         }),
         "няма поле за файл \"egn\""},
        {"upload of a type the field refuses", refused<void>([&](auto done) {
             client.uploadFile(fileOf("plain words", "text/plain", "notes.txt"),
                               upload(QStringLiteral("incomeDocument"), "documents"), done);
         }),
         "Приемат се само файлове PDF и JPEG."},
        {"upload above the size limit", refused<void>([&](auto done) {
             client.uploadFile(fileOf(QByteArray(5 * 1048576 + 1, 'x'), "application/pdf", "big.pdf"),
                               upload(QStringLiteral("incomeDocument"), "documents"), done);
         }),
         "по-голям от 5 MB"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto message = c.call();
        ASSERT_TRUE(message.has_value()) << "not refused with a backend message";
        EXPECT_TRUE(message->contains(QString::fromUtf8(c.words))) << message->toStdString();
    }
    // A file exactly at the limit is accepted, as the client accepts it.
    const auto atLimit = awaitResult<void>([&](auto done) {
        client.uploadFile(fileOf(QByteArray(5 * 1048576, 'x'), "image/jpeg", "scan.jpeg"),
                          upload(QStringLiteral("incomeDocument"), "documents"), done);
    });
    EXPECT_TRUE(atLimit.isSuccess());
}

TEST_F(BackendCalls, MalformedBodiesAndUnknownAddressesAreRefused) {
    struct Case {
        QByteArray method;
        const char* path;
        QByteArray body;
        QByteArray contentType;
        int status;
    };
    const Case cases[] = {
        {"POST", "/submission", "{\"processId\": 5}", "application/json", 400},
        {"POST", "/step", "not json", "application/json", 400},
        {"POST", "/step/uploadFile", "--x\r\nbroken", "multipart/form-data; boundary=x", 400},
        {"POST", "/step/uploadFile", "{}", "application/json", 400},
        {"POST", "/custom/credit/installmentDetails",
         "{\"productId\":101,\"amount\":\"1000\",\"periods\":12}", "application/json", 400},
        {"GET", "/custom/credit/installmentDates?productId=abc", {}, {}, 400},
        {"GET", "/custom/credit/installmentDates?productId=101&preferedDate=soon", {}, {}, 400},
        {"GET", "/no/such/address", {}, {}, 404},
        {"DELETE", "/submission", {}, {}, 405},
        {"GET", "/_demo/submissions/nobody", {}, {}, 404},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.method.constData()) + " " + c.path);
        const RawAnswer answer = raw(c.method, QString::fromLatin1(c.path), c.body, c.contentType);
        EXPECT_EQ(answer.status, c.status);
        EXPECT_EQ(answer.contentType, "application/json; charset=utf-8");
        EXPECT_TRUE(TSRBackendError::decode(answer.body).has_value()) << answer.body.toStdString();
    }
}

TEST_F(BackendCalls, ProductsAreServedExactlyAsTheirFileDefinesThem) {
    QFile file(kCreditRequest + QStringLiteral("/products.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto defined = decodeDocument<std::vector<CreditProductJSON>>(file.readAll());
    ASSERT_TRUE(defined.has_value());
    const auto served = awaitResult<std::vector<CreditProductJSON>>(
        [&](auto done) { TSRNetwork::shared().fetchCreditProducts(done); });
    ASSERT_TRUE(served.isSuccess());
    EXPECT_EQ(served.value(), *defined);
    EXPECT_EQ(served.value().front().annualInterestRate, dec("11.9"));
}

TEST_F(BackendCalls, InstalmentPlanIsAnAnnuityOnTheProductsRate) {
    struct Case {
        qint64 product;
        const char* amount;
        qint64 periods;
        const char* instalment;
        const char* totalDue;
    };
    // Product 101 lends at 11.9 % a year, 102 at 15.5 %, both repaid monthly.
    const Case cases[] = {
        {101, "10000", 12, "888.02", "10656.23"},
        {101, "2500.50", 24, "117.59", "2822.18"},
        {102, "5000", 18, "313.10", "5635.81"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.amount);
        const auto plan = awaitResult<CreditInstalmentDetailsJSON>([&](auto done) {
            TSRNetwork::shared().fetchInstalmentDetails(
                InstalmentDetailsDTO{c.product, dec(c.amount), c.periods}, done);
        });
        ASSERT_TRUE(plan.isSuccess());
        EXPECT_EQ(plan.value().selectedCreditAmount.description(), dec(c.amount).description());
        EXPECT_EQ(plan.value().selectedPeriod, c.periods);
        EXPECT_EQ(plan.value().instalmentAmount, dec(c.instalment));
        EXPECT_EQ(plan.value().totalDueAmount, dec(c.totalDue));
        ASSERT_EQ(plan.value().accruals.size(), 2u);
        EXPECT_EQ(plan.value().accruals[0].amount + plan.value().accruals[1].amount, dec(c.totalDue));
    }
}

TEST_F(BackendCalls, FirstInstalmentDatesAreWorkingDaysAboutAMonthAhead) {
    const auto dates = awaitResult<CreditInstalmentDatesJSON>(
        [&](auto done) { TSRNetwork::shared().fetchInstalmentDates(101, done); });
    ASSERT_TRUE(dates.isSuccess());
    EXPECT_EQ(dates.value().productId, QStringLiteral("101"));
    const auto& available = dates.value().availableDates;
    ASSERT_FALSE(available.empty());
    for (const QDate& day : available)
        EXPECT_LE(day.dayOfWeek(), 5) << day.toString(Qt::ISODate).toStdString();
    const QDate today = QDate::currentDate();
    EXPECT_GE(available.front(), today.addDays(13));
    EXPECT_LE(available.back(), today.addMonths(1).addDays(15));
    ASSERT_TRUE(dates.value().defaultFirstInstallmentDate.has_value());
    const QDate preset = *dates.value().defaultFirstInstallmentDate;
    EXPECT_NE(std::find(available.begin(), available.end(), preset), available.end());
    EXPECT_GE(preset, today.addMonths(1).addDays(-1)); // the client's day may differ from ours at midnight
    EXPECT_LE(preset, today.addMonths(1).addDays(3));
}

TEST_F(BackendCalls, CurrentStepComesFromTheLatestSubmissionThatReachedIt) {
    const auto a = start();
    const auto b = start();
    ASSERT_TRUE(a.isSuccess() && b.isSuccess());
    const QString idA = *a.value().submissionId;
    const QString idB = *b.value().submissionId;
    const auto current = [&] {
        return awaitResult<SubmissionJSON>(
            [&](auto done) { TSRNetwork::shared().loadCurrentStep(QStringLiteral("contact-data"), done); });
    };
    ASSERT_TRUE(submit(idA, QStringLiteral("contact-data"), QStringLiteral("personal-data")).isSuccess());
    ASSERT_TRUE(submit(idB, QStringLiteral("contact-data"), QStringLiteral("personal-data")).isSuccess());
    EXPECT_EQ(current().value().submissionId, idB);
    ASSERT_TRUE(submit(idA, QStringLiteral("personal-data"), QStringLiteral("contact-data")).isSuccess());
    ASSERT_TRUE(submit(idA, QStringLiteral("contact-data"), QStringLiteral("personal-data")).isSuccess());
    const auto reopened = current();
    ASSERT_TRUE(reopened.isSuccess());
    EXPECT_EQ(reopened.value().submissionId, idA);
    EXPECT_EQ(reopened.value().directionId, QStringLiteral("contact-data"));
}

TEST_F(BackendCalls, LeavingVerificationFollowsTheVerificationResult) {
    struct Case {
        const char* status;
        const char* next;
    };
    const Case cases[] = {
        {"KYC_STATUS_SELFIE_OK", "closing"},
        {"PROCESS_SUCCESS", "closing"},
        {"KYC_STATUS_FAILED", "kyc-failed"},
        {"PROCESS_FAIL", "kyc-failed"},
        // Undecided: the verification step is answered again.
        {"KYC_WAIT_FOR_VIDEO_STREAM", "kyc-verification"},
    };
    const QString kyc = QStringLiteral("kyc-verification");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.status);
        const auto first = start();
        ASSERT_TRUE(first.isSuccess());
        const QString id = *first.value().submissionId;
        ASSERT_TRUE(submit(id, kyc, QStringLiteral("credit-calculator")).isSuccess());
        ASSERT_TRUE(server->setKycStatus(id, QString::fromLatin1(c.status)));
        const auto next = submit(id, kyc, kyc);
        ASSERT_TRUE(next.isSuccess());
        EXPECT_EQ(next.value().directionId, QString::fromLatin1(c.next));
    }
}

TEST_F(BackendCalls, ANewVerificationAttemptStartsUndecided) {
    const auto first = start();
    ASSERT_TRUE(first.isSuccess());
    const QString id = *first.value().submissionId;
    const QString kyc = QStringLiteral("kyc-verification");
    const auto entered = submit(id, kyc, QStringLiteral("credit-calculator"));
    ASSERT_TRUE(entered.isSuccess());
    const QString hash = *entered.value().settings->userHash;
    ASSERT_TRUE(server->setKycStatus(id, QStringLiteral("KYC_STATUS_FAILED")));
    const auto failed = submit(id, kyc, kyc);
    ASSERT_TRUE(failed.isSuccess());
    ASSERT_EQ(failed.value().directionId, QStringLiteral("kyc-failed"));

    const auto retry = submit(id, kyc, QStringLiteral("kyc-failed"), {}, QStringLiteral("kycFailedRetry"));
    ASSERT_TRUE(retry.isSuccess());
    EXPECT_EQ(retry.value().directionId, kyc);
    const auto status =
        awaitResult<KYCStatusJSON>([&](auto done) { TSRNetwork::shared().requestKYCStatus(id, hash, done); });
    ASSERT_TRUE(status.isSuccess());
    EXPECT_EQ(status.value().code, QStringLiteral("KYC_WAIT_FOR_VIDEO_STREAM"));
    EXPECT_FALSE(server->setKycStatus(QStringLiteral("nobody"), QStringLiteral("PROCESS_SUCCESS")));
}

TEST_F(BackendCalls, EveryRequestIsLoggedOnOneLine) {
    log.clear();
    ASSERT_TRUE(start().isSuccess());
    ASSERT_TRUE(backendMessage(start(QStringLiteral("missing"))).has_value());
    ASSERT_EQ(log.size(), 2);
    const QRegularExpression line(
        QStringLiteral("^POST /submission (200|400) [0-9]+ bytes [0-9]+\\.[0-9] ms$"));
    EXPECT_TRUE(line.match(log[0]).hasMatch()) << log[0].toStdString();
    EXPECT_TRUE(log[0].contains(QLatin1String(" 200 ")));
    EXPECT_TRUE(line.match(log[1]).hasMatch()) << log[1].toStdString();
    EXPECT_TRUE(log[1].contains(QLatin1String(" 400 ")));
}

TEST_F(BackendCalls, WebSocketUpgradesOnTheSamePortReachTheHandler) {
    const QUrl address(QStringLiteral("ws://127.0.0.1:%1/mobile/h264").arg(server->port()));
    // Without a handler only the verification service's paths are taken.
    QWebSocket refused;
    bool failed = false;
    QObject::connect(&refused, &QWebSocket::disconnected, [&] { failed = true; });
    refused.open(QUrl(QStringLiteral("ws://127.0.0.1:%1/elsewhere").arg(server->port())));
    EXPECT_TRUE(runUntil([&] { return failed; }));
    EXPECT_NE(refused.state(), QAbstractSocket::ConnectedState);

    std::unique_ptr<QWebSocket> accepted;
    server->setWebSocketHandler([&](std::unique_ptr<QWebSocket> socket) { accepted = std::move(socket); });
    QWebSocket client;
    client.open(address);
    ASSERT_TRUE(runUntil([&] { return accepted && client.state() == QAbstractSocket::ConnectedState; }));
    EXPECT_EQ(accepted->requestUrl().path(), QStringLiteral("/mobile/h264"));
    QString received;
    QObject::connect(accepted.get(), &QWebSocket::textMessageReceived,
                     [&](const QString& text) { received = text; });
    client.sendTextMessage(QStringLiteral("{\"cmd\":\"join\"}"));
    EXPECT_TRUE(runUntil([&] { return !received.isEmpty(); }));
    // Plain requests are still answered alongside.
    EXPECT_TRUE(start().isSuccess());
}
