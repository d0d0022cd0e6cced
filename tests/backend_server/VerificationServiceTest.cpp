// The verification simulator on the backend's port, driven by the SDK's own socket and signalling
// client, with real H.264 from OpenH264.
#include "EncodedStream.h"
#include "ServedSample.h"
#include "backend/H264StreamDecoder.h"
#include "tessara/kyc/signalling/TSRNativeSignallingClient.h"
#include "tessara/kyc/signalling/TSRWebSocket.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <atomic>

using namespace tessara;
using namespace tessara::testing;

namespace {

// The screen's side of the signalling, reduced to what the simulator steers: statuses and cameras
// are recorded, and frames flow while the service is ready, as the client does.
class StreamingScreen : public QObject, public TSRNativeSignallingDelegate {
public:
    explicit StreamingScreen(QSize size)
        : pictures_(encodedGroup(size.width(), size.height())) {
        connect(&pacer_, &QTimer::timeout, this, [this] { sendPicture(); });
    }

    void start(const QUrl& streamUrl, const QString& userHash) {
        TSRSignallingClient::setUserHash(userHash);
        client_ = std::make_unique<TSRNativeSignallingClient>(
            std::make_unique<TSRWebSocket>(TSRNativeSignallingClient::socketUrl(streamUrl)));
        client_->setDelegate(this);
        client_->webSocket()->connect();
    }
    void stop() {
        pacer_.stop();
        if (client_)
            client_->setDelegate(nullptr);
        client_.reset();
    }
    ~StreamingScreen() override { stop(); }

    bool sendsVideo = true;
    QStringList statuses;
    std::vector<int> cameras;
    int nnConnected = 0;
    int failures = 0;
    bool ended = false;

    void didReceiveOverlayRectangle(const OverlayRectangle&) override {}
    void didRemoveOverlayRectangle(const RemoveRectangle&) override {}
    void didReceiveTrackingCoordinates(double, double) override {}
    void didReceiveOCRAction(OCRAction) override {}
    void didReceiveOCRProgress(float, float) override {}
    void didReceiveQuality(const QString&) override {}
    void didReceiveStatus(const QString& type) override {
        statuses << type;
        if (isTerminalStatus(type)) {
            ended = true;
            pacer_.stop();
            client_->sendByeAndDisconnect();
        }
    }
    void didReceiveStartCamera(int position) override { cameras.push_back(position); }
    void didConnectToService() override {
        ++nnConnected;
        if (sendsVideo && !ended)
            pacer_.start(4);
    }
    void setSocketConnected(bool) override {}
    void setCurrentCameraPosition(int) override {}
    void setServerIsReadyForFrames(bool ready) override { ready_ = ready; }
    void stopFramesAfterSocketFailure() override {
        ready_ = false;
        ++failures;
    }

private:
    void sendPicture() {
        if (!client_ || !client_->webSocket())
            return;
        // The client detaches its frames on a failure until the service is ready again.
        if (!ready_)
            return;
        for (const QByteArray& unit : pictures_[next_ % pictures_.size()])
            client_->webSocket()->sendBytes(unit);
        ++next_;
    }

    const std::vector<EncodedPicture>& pictures_;
    std::unique_ptr<TSRNativeSignallingClient> client_;
    QTimer pacer_;
    std::atomic<bool> ready_{false};
    size_t next_ = 0;
};

// The sample process once per script, as "credit-<script>".
class Simulator : public ServedSample {
protected:
    void SetUp() override {
        ASSERT_TRUE(processes.isValid());
        for (const char* script : {"happy", "failed", "no-video", "no-service", "dropped-connection"})
            copySample(QString::fromLatin1(script));
        server = std::make_unique<BackendServer>();
        server->setRequestLogger({});
        const QStringList errors = server->loadProcesses(processes.path());
        ASSERT_TRUE(errors.isEmpty()) << errors.join(QLatin1Char('\n')).toStdString();
        ASSERT_NE(server->listen(0), 0);
        TSRNetwork::shared().setInstanceURL(server->baseUrl());
    }

    void copySample(const QString& script) {
        const QString target = processes.filePath(QStringLiteral("credit-") + script);
        QDirIterator files(kCreditRequest, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString source = files.next();
            const QString copy = target + source.mid(kCreditRequest.size());
            QDir().mkpath(QFileInfo(copy).path());
            ASSERT_TRUE(QFile::copy(source, copy));
        }
        QFile process(target + QStringLiteral("/process.json"));
        ASSERT_TRUE(process.open(QIODevice::ReadOnly));
        QJsonObject definition = QJsonDocument::fromJson(process.readAll()).object();
        process.close();
        definition[QStringLiteral("processId")] = QStringLiteral("credit-") + script;
        definition[QStringLiteral("verificationScript")] = script;
        ASSERT_TRUE(process.open(QIODevice::WriteOnly | QIODevice::Truncate));
        process.write(QJsonDocument(definition).toJson());
    }

    // A submission of the script's process; returns its id and user hash.
    std::pair<QString, QString> submission(const QString& script) {
        const auto first = start(QStringLiteral("credit-") + script);
        EXPECT_TRUE(first.isSuccess());
        const QString id = first.isSuccess() ? first.value().submissionId.value_or(QString()) : QString();
        return {id, demoRecord(id)[QStringLiteral("userHash")].toString()};
    }

    QString kycStatus(const QString& id, const QString& hash) {
        const RawAnswer answer = raw("GET", QStringLiteral("/step/v3/status/kyc/%1/%2").arg(id, hash));
        return QJsonDocument::fromJson(answer.body).object()[QStringLiteral("code")].toString();
    }

    QJsonObject seen(const QString& id) { return demoRecord(id)[QStringLiteral("verification")].toObject(); }

    QUrl streamUrl() const { return QUrl(QStringLiteral("ws://127.0.0.1:%1/").arg(server->port())); }

    QTemporaryDir processes;
};

} // namespace

TEST_F(Simulator, EachScriptEndsWithTheWordAServiceWouldSendAndTheStatusCallAgrees) {
    struct Case {
        const char* script;
        QStringList words;
        int nnConnected;
        bool videoReaches; // pictures are decoded
    };
    const Case cases[] = {
        {"happy",
         {"KYC_STATUS_ID_PREPARE_FACE", "KYC_STATUS_ID_PREPARE_BACK", "KYC_STATUS_SELFIE_PREPARE_HEAD",
          "KYC_STATUS_SELFIE_TURN_HEAD", "KYC_STATUS_SELFIE_TOUCH_ELEMENT", "KYC_STATUS_SELFIE_OK"},
         1,
         true},
        {"failed",
         {"KYC_STATUS_ID_PREPARE_FACE", "KYC_STATUS_ID_PREPARE_BACK", "KYC_STATUS_SELFIE_PREPARE_HEAD",
          "KYC_STATUS_FAILED"},
         1,
         true},
        {"no-video", {"KYC_WAIT_FOR_VIDEO_STREAM", "FAILED_NO_VIDEO_STREAM_CONNECTION"}, 0, false},
        {"no-service", {"NO_NN_SERVER", "PROCESS_FAIL"}, 0, false},
    };
    for (const Case& c : cases) {
        const QString script = QString::fromLatin1(c.script);
        SCOPED_TRACE(c.script);
        const auto [id, hash] = submission(script);
        StreamingScreen screen(QSize(1440, 1080));
        screen.start(streamUrl(), hash);
        ASSERT_TRUE(runUntil([&] { return screen.ended; }, 15000)) << screen.statuses.join(' ').toStdString();
        EXPECT_EQ(screen.statuses, c.words);
        EXPECT_EQ(screen.cameras, std::vector<int>{1}) << "startCamera \"back\" answers the join";
        EXPECT_EQ(screen.nnConnected, c.nnConnected);
        EXPECT_EQ(kycStatus(id, hash), c.words.last());
        const QJsonObject report = seen(id);
        EXPECT_EQ(report[QStringLiteral("script")].toString(), script);
        EXPECT_EQ(report[QStringLiteral("status")].toString(), c.words.last());
        EXPECT_EQ(report[QStringLiteral("pictures")].toInt() > 0, c.videoReaches);
    }
}

TEST_F(Simulator, VideoThatIsMissingOrOfAnotherSizeNeverPasses) {
    struct Case {
        const char* name;
        QSize size;
        bool sendsVideo;
    };
    const Case cases[] = {
        {"nothing sent", QSize(1440, 1080), false},
        {"uncropped portrait", QSize(1080, 1440), true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto [id, hash] = submission(QStringLiteral("happy"));
        StreamingScreen screen(c.size);
        screen.sendsVideo = c.sendsVideo;
        screen.start(streamUrl(), hash);
        // More pictures than the whole script needs, or a second of silence. The id is copied:
        // some compilers cannot capture a structured binding.
        runUntil([&, id = id] { return seen(id)[QStringLiteral("pictures")].toInt() >= 150; },
                 c.sendsVideo ? 15000 : 1000);
        EXPECT_EQ(screen.statuses, QStringList{"KYC_STATUS_ID_PREPARE_FACE"});
        EXPECT_EQ(kycStatus(id, hash), QStringLiteral("KYC_STATUS_ID_PREPARE_FACE"));
        if (c.sendsVideo) {
            EXPECT_EQ(seen(id)[QStringLiteral("height")].toInt(), c.size.height());
        }
        screen.stop();
    }
}

TEST_F(Simulator, ReportsWhatItDecodedAndKeepsThePlayableStream) {
    const auto [id, hash] = submission(QStringLiteral("happy"));
    StreamingScreen screen(QSize(1440, 1080));
    screen.start(streamUrl(), hash);
    ASSERT_TRUE(runUntil([&] { return screen.ended; }, 15000));
    const QJsonObject report = seen(id);
    EXPECT_GE(report[QStringLiteral("pictures")].toInt(), 108);
    EXPECT_EQ(report[QStringLiteral("width")].toInt(), 1440);
    EXPECT_EQ(report[QStringLiteral("height")].toInt(), 1080);
    // One key frame opens every loop of 30 pictures.
    EXPECT_GE(report[QStringLiteral("keyFrames")].toInt(), 4);
    EXPECT_EQ(report[QStringLiteral("profile")].toInt(), 66);
    EXPECT_EQ(report[QStringLiteral("level")].toInt(), 41);
    EXPECT_GE(report[QStringLiteral("firstPictureMs")].toInt(-1), 0);
    EXPECT_EQ(report[QStringLiteral("reconnects")].toInt(), 0);
    EXPECT_EQ(report[QStringLiteral("attempt")].toInt(), 1);

    // The file holds every unit received, and decodes to the pictures the service counted.
    QFile stream(report[QStringLiteral("streamPath")].toString());
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly)) << stream.fileName().toStdString();
    const QByteArray bytes = stream.readAll();
    EXPECT_EQ(bytes.size(), report[QStringLiteral("bytes")].toInteger());
    EXPECT_TRUE(bytes.startsWith(QByteArray("\0\0\0\1", 4)));
    EXPECT_EQ(H264StreamDecoder::nalType(bytes), 7) << "the stream opens with its sequence parameter set";
    H264StreamDecoder decoder;
    int pictures = 0;
    for (qsizetype at = 0; at < bytes.size();) {
        qsizetype next = bytes.indexOf(QByteArray("\0\0\0\1", 4), at + 4);
        if (next < 0)
            next = bytes.size();
        pictures += decoder.feed(QByteArrayView(bytes).sliced(at, next - at)).decoded;
        at = next;
    }
    EXPECT_EQ(pictures, report[QStringLiteral("pictures")].toInt());

    // Entering the step again is a new attempt with a file of its own.
    StreamingScreen again(QSize(1440, 1080));
    again.start(streamUrl(), hash);
    ASSERT_TRUE(runUntil([&] { return again.ended; }, 15000));
    const QJsonObject second = seen(id);
    EXPECT_EQ(second[QStringLiteral("attempt")].toInt(), 2);
    EXPECT_NE(second[QStringLiteral("streamPath")].toString(),
              report[QStringLiteral("streamPath")].toString());
}

TEST_F(Simulator, ADroppedConnectionIsRejoinedAndFramesResumeAfterTheSecondNnConnected) {
    const auto [id, hash] = submission(QStringLiteral("dropped-connection"));
    StreamingScreen screen(QSize(1440, 1080));
    screen.start(streamUrl(), hash);
    ASSERT_TRUE(runUntil([&] { return screen.ended; }, 15000)) << screen.statuses.join(' ').toStdString();
    EXPECT_EQ(screen.statuses.last(), QStringLiteral("KYC_STATUS_SELFIE_OK"));
    EXPECT_EQ(screen.failures, 1);
    EXPECT_EQ(screen.nnConnected, 2);
    EXPECT_EQ(screen.cameras, (std::vector<int>{1, 1})) << "the camera of the document phase again";
    // The client sends nothing while the link is down, so the rest of the script ran on the pictures
    // that came after the second "nn-connected".
    const QJsonObject report = seen(id);
    EXPECT_EQ(report[QStringLiteral("reconnects")].toInt(), 1);
    EXPECT_GE(report[QStringLiteral("pictures")].toInt(), 108);
    EXPECT_EQ(kycStatus(id, hash), QStringLiteral("KYC_STATUS_SELFIE_OK"));
}
