#pragma once

#include "api/ApiFixtures.h"
#include "support/LoopbackHttpServer.h"
#include "support/LoopbackWebSocketServer.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/kyc/KYCGuidance.h"
#include "tessara/kyc/TSRNativeKYCController.h"
#include "tessara/kyc/video/SyntheticCaptureSystem.h"
#include "tessara/platform/HostHooks.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tessara::test {

// A verification step whose stream URL is `stream`; `settings` adds to (or replaces) its settings.
inline SubmissionJSON verificationStep(const QUrl& stream, const QJsonObject& extraSettings = {}) {
    QJsonObject settings{{"userHash", "u-1"}, {"streamUrl", stream.toString()}};
    for (auto it = extraSettings.begin(); it != extraSettings.end(); ++it)
        settings.insert(it.key(), it.value());
    const QJsonObject step{
        {"type", "KYC_ID"},
        {"directionId", "d-kyc"},
        {"submissionId", "s-1"},
        {"settings", settings},
        {"fields",
         QJsonArray{
             QJsonObject{
                 {"type", "TEXT"}, {"specialType", "KYC_WAIT_FOR_VIDEO_STREAM"}, {"label", "Свързване…"}},
             QJsonObject{{"type", "TEXT"},
                         {"specialType", "KYC_STATUS_ID_PREPARE_FACE"},
                         {"label", "Поставете личната карта в рамката"}},
             QJsonObject{{"type", "TEXT"},
                         {"specialType", "KYC_STATUS_SELFIE_PREPARE_HEAD"},
                         {"label", "Погледнете в камерата"}},
             QJsonObject{
                 {"type", "TEXT"}, {"specialType", "KYC_STATUS_IMAGE_BLURRED"}, {"label", "Размазано"}},
             QJsonObject{{"type", "TEXT"}, {"specialType", "STOP_MEDIA"}, {"label", "Пауза"}},
             QJsonObject{{"type", "TEXT"}, {"specialType", "NO_NN_SERVER"}, {"label", "Няма услуга"}},
             QJsonObject{{"type", "TEXT"},
                         {"specialType", "FAILED_NO_VIDEO_STREAM_CONNECTION"},
                         {"label", "Няма видео"}},
             QJsonObject{{"type", "TEXT"}, {"specialType", "KYC_STATUS_SELFIE_OK"}, {"label", "Готово"}},
             QJsonObject{{"type", "TEXT"}, {"specialType", "SOMETHING_NEW"}, {"label", "Друго"}},
         }},
    };
    return decodeStep(QJsonDocument(step).toJson(QJsonDocument::Compact));
}

// A verification screen in a navigation screen over a host window, filmed by synthetic cameras,
// talking to a loopback service and a loopback backend.
struct ScreenRig {
    explicit ScreenRig(const QJsonObject& extraSettings = {},
                       SyntheticCaptureSystem::Options cameras = SyntheticCaptureSystem::Options{}) {
        useServer(backend);
        system = std::make_shared<SyntheticCaptureSystem>(cameras);
        auto made = std::make_unique<TSRNativeKYCController>(
            verificationStep(service.url("/"), extraSettings), &host, system);
        screen = made.get();
        navigation = new TSRNavigationViewController(std::move(made), &host); // owned by host
        navigation->setGeometry(host.rect());
        navigation->show();
    }

    // The service side: join seen, then the commands of a session.
    bool joined(int joins = 1) { return service.waitForFrames(RecordedFrame::Kind::binary, joins); }
    void say(const QByteArray& json) { service.sendText(json); }
    void status(const char* word) { screen->didReceiveStatus(QString::fromLatin1(word)); }
    // Camera on, service ready: frames flow.
    bool streaming(const char* camera = "back") {
        if (!joined())
            return false;
        say(QByteArray(R"({"cmd":"startCamera","type":")") + camera + R"("})");
        say(R"({"cmd":"nn-connected"})");
        return waitUntil([&] { return screen->isCaptureSessionRunning(); });
    }
    QWidget* find(const QString& name) const { return screen->findChild<QWidget*>(name); }
    bool shown(const QString& name) const {
        QWidget* w = find(name);
        return w && w->isVisible();
    }

    LoopbackHttpServer backend;
    LoopbackWebSocketServer service;
    HostWidget host;
    std::shared_ptr<SyntheticCaptureSystem> system;
    TSRNavigationViewController* navigation = nullptr;
    QPointer<TSRNativeKYCController> screen;
};

} // namespace tessara::test
