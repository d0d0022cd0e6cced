#pragma once

// A reference backend on a free loopback port, serving the sample processes of this tree, with
// the SDK's shared client pointed at it. Tests talk to it the way the SDK does.

#include "backend/BackendServer.h"
#include "tessara/backend/TSRNetwork.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace tessara::testing {

inline const QString kSampleProcesses = QStringLiteral(TESSARA_SOURCE_DIR "/examples/processes");
inline const QString kCreditRequest = kSampleProcesses + QStringLiteral("/credit-request");

// Runs a real event loop until `done` holds or the time is up. (QTest::qWaitFor sleeps between
// event batches, which throttles a transfer whose both ends live on this thread.)
template <typename Predicate> bool runUntil(Predicate done, int timeoutMs = 10000) {
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    poll.start(1);
    if (!done())
        loop.exec();
    return done();
}

// Waits for the completion that `call` hands to the client; a call that never completes fails
// the test and yields a `custom` error, so the test can go on to report more.
template <typename T, typename Call> TSRResult<T> awaitResult(Call&& call, int timeoutMs = 10000) {
    std::optional<TSRResult<T>> result;
    call([&result](TSRResult<T> outcome) { result.emplace(std::move(outcome)); });
    if (!runUntil([&result] { return result.has_value(); }, timeoutMs)) {
        ADD_FAILURE() << "the backend call did not complete";
        return TSRNetworkError::custom(QStringLiteral("no completion"));
    }
    return std::move(*result);
}

// The backend's message of a refused call, or nullopt when the call did not end that way.
template <typename T> std::optional<QString> backendMessage(const TSRResult<T>& result) {
    if (result.isSuccess())
        return std::nullopt;
    if (const TSRBackendError* error = backendError(result.error()))
        return error->localizedDescription;
    return std::nullopt;
}

struct RawAnswer {
    int status = 0;
    QByteArray contentType;
    QByteArray body;
};

class ServedSample : public ::testing::Test {
protected:
    void SetUp() override {
        server = std::make_unique<BackendServer>();
        server->setRequestLogger([this](const QString& line) { log << line; });
        const QStringList errors = server->loadProcesses(kSampleProcesses);
        ASSERT_TRUE(errors.isEmpty()) << errors.join(QLatin1Char('\n')).toStdString();
        ASSERT_NE(server->listen(0), 0);
        TSRNetwork::shared().setInstanceURL(server->baseUrl());
    }

    void TearDown() override { TSRNetwork::shared().setInstanceURL(std::nullopt); }

    // For what the SDK never asks: the demo record, malformed bodies, unknown paths.
    RawAnswer raw(const QByteArray& method, const QString& path, const QByteArray& body = {},
                  const QByteArray& contentType = "application/json") {
        QNetworkRequest request(server->baseUrl().resolved(QUrl(path)));
        if (!body.isEmpty())
            request.setHeader(QNetworkRequest::ContentTypeHeader, contentType);
        QNetworkReply* reply = manager.sendCustomRequest(request, method, body);
        const bool done = runUntil([reply] { return reply->isFinished(); });
        EXPECT_TRUE(done) << "no answer to " << method.constData() << " " << path.toStdString();
        RawAnswer answer{reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
                         reply->rawHeader("Content-Type"), reply->readAll()};
        reply->deleteLater();
        return answer;
    }

    QJsonObject demoRecord(const QString& submissionId) {
        const RawAnswer answer = raw("GET", QStringLiteral("/_demo/submissions/") + submissionId);
        EXPECT_EQ(answer.status, 200);
        return QJsonDocument::fromJson(answer.body).object();
    }

    TSRResult<SubmissionJSON> start(const QString& processId = QStringLiteral("credit-request")) {
        return awaitResult<SubmissionJSON>([&](auto done) {
            TSRNetwork::shared().createSubmission(SubmissionCreateDTO{processId, std::nullopt}, done);
        });
    }

    TSRResult<SubmissionJSON> submit(const QString& submissionId, const QString& to, const QString& from,
                                     std::vector<FieldValueDTO> fields = {},
                                     std::optional<QString> flowField = std::nullopt) {
        return awaitResult<SubmissionJSON>([&](auto done) {
            TSRNetwork::shared().submitStep(
                SubmitStepDTO{submissionId, to, from, flowField, std::move(fields)}, done);
        });
    }

    std::unique_ptr<BackendServer> server;
    QStringList log;
    QNetworkAccessManager manager;
};

} // namespace tessara::testing
