#include "ScreenTestSupport.h"
#include "tessara/kyc/LivePicture.h"
#include "tessara/kyc/video/VideoClient.h"
#include "tessara/ui/Alert.h"
#include "tessara/ui/BusyButton.h"

#include <QAbstractButton>
#include <QLabel>

namespace tessara::test {
namespace {

int unitsAtService(ScreenRig& rig) {
    // The join is the first binary frame; every later one is a video unit.
    return std::max(0, int(rig.service.frames(RecordedFrame::Kind::binary).size()) - 1);
}

TEST(CaptureFlow, FramesFlowOnlyOnceBothTheCameraAndTheServiceAreReadyInEitherOrder) {
    for (const bool serviceFirst : {true, false}) {
        SCOPED_TRACE(serviceFirst);
        ScreenRig rig;
        ASSERT_TRUE(rig.joined());
        if (serviceFirst)
            rig.say(R"({"cmd":"nn-connected"})");
        rig.say(R"({"cmd":"startCamera","type":"back"})");
        if (!serviceFirst) {
            ASSERT_TRUE(waitUntil([&] { return rig.screen->cameraHasStarted(); }));
            settle(150);
            EXPECT_FALSE(rig.screen->isCaptureSessionRunning());
            EXPECT_EQ(unitsAtService(rig), 0) << "no frames before the service is ready";
            rig.say(R"({"cmd":"nn-connected"})");
        }
        ASSERT_TRUE(waitUntil([&] { return unitsAtService(rig) >= 3; }));
        // Every message is one unit in Annex B form.
        EXPECT_TRUE(
            rig.service.frames(RecordedFrame::Kind::binary)[1].payload.startsWith(QByteArray("\0\0\0\1", 4)));
        EXPECT_TRUE(waitUntil([&] { return rig.screen->livePicture()->framesShown() > 0; }))
            << "the preview shows the camera";
    }
}

TEST(CaptureFlow, PhasesFlipThePreviewAndSwitchCamerasOnlyOnTheWayIn) {
    ScreenRig rig;
    ASSERT_TRUE(rig.streaming());
    LivePicture* picture = rig.screen->livePicture();
    auto camerasMade = [&] { return rig.system->devicesMade().size(); };
    EXPECT_TRUE(waitUntil([&] { return camerasMade() == 1; }));

    rig.status("KYC_STATUS_SELFIE_PREPARE_HEAD");
    EXPECT_EQ(picture->flipCount(), 1);
    EXPECT_EQ(picture->lastFlipDirection(), LivePicture::FlipDirection::fromRight);
    EXPECT_FALSE(rig.shown("faceCutoutImageView")) << "the face frame waits 150 ms";
    ASSERT_TRUE(waitUntil([&] { return camerasMade() == 2; }));
    EXPECT_EQ(rig.system->devicesMade().back()->position(), CapturePosition::front);
    EXPECT_TRUE(waitUntil([&] { return rig.shown("faceCutoutImageView"); }));
    EXPECT_TRUE(picture->isMirrored());

    rig.status("KYC_STATUS_SELFIE_TURN_HEAD"); // still the selfie: no flip, no camera
    settle(200);
    EXPECT_EQ(picture->flipCount(), 1);
    EXPECT_EQ(camerasMade(), 2u);

    rig.status("KYC_STATUS_ID_PREPARE_BACK");
    EXPECT_EQ(picture->flipCount(), 2);
    EXPECT_EQ(picture->lastFlipDirection(), LivePicture::FlipDirection::fromLeft);
    EXPECT_FALSE(rig.shown("faceCutoutImageView"));
    EXPECT_TRUE(rig.shown("idCardCutoutImageView"));
    ASSERT_TRUE(waitUntil([&] { return camerasMade() == 3; }));
    EXPECT_EQ(rig.system->devicesMade().back()->position(), CapturePosition::back);
    const int before = unitsAtService(rig);
    EXPECT_TRUE(waitUntil([&] { return unitsAtService(rig) > before; })) << "frames resume after the switch";
}

TEST(CaptureFlow, StartingWithTheFrontCameraGoesStraightToTheSelfie) {
    ScreenRig rig;
    ASSERT_TRUE(rig.streaming("front"));
    EXPECT_TRUE(rig.screen->checkingSelfie());
    EXPECT_TRUE(rig.shown("faceCutoutImageView"));
    EXPECT_EQ(rig.screen->livePicture()->flipCount(), 0);
    EXPECT_EQ(rig.system->devicesMade().front()->position(), CapturePosition::front);
}

TEST(CaptureFlow, ARefusedCameraOffersTheSettings) {
    SyntheticCaptureSystem::Options refused;
    refused.status = AuthorizationStatus::denied;
    ScreenRig rig({}, refused);
    HostHooks::instance().settingsUrl = QUrl(QStringLiteral("app-settings:camera"));
    QUrl opened;
    HostHooks::instance().openUrl = [&](const QUrl& url) {
        opened = url;
        return true;
    };
    ASSERT_TRUE(rig.joined());
    rig.say(R"({"cmd":"startCamera","type":"back"})");
    BusyButton* button = rig.screen->continueButton();
    ASSERT_TRUE(waitUntil([&] { return button->isVisible(); }));
    EXPECT_EQ(button->text(), QStringLiteral("Настройки"));
    EXPECT_EQ(rig.screen->guidance()->instructionsLabel()->text(),
              QStringLiteral("Трябва да разрешите достъп до камерата. Можете да го направите в Настройки."));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(opened, QUrl(QStringLiteral("app-settings:camera")));
    EXPECT_EQ(rig.backend.requestCount(), 0);
    EXPECT_TRUE(button->isEnabled());
    HostHooks::instance().openUrl = nullptr;
}

TEST(CaptureFlow, TheBackgroundStopsFramesAndTheForegroundStartsAFreshCamera) {
    ScreenRig rig;
    ASSERT_TRUE(rig.joined());
    // Before nn-connected the application's state is none of the screen's business.
    rig.screen->handleAppState(TSRNativeKYCController::AppEvent::didEnterBackground);
    rig.say(R"({"cmd":"startCamera","type":"back"})");
    rig.say(R"({"cmd":"nn-connected"})");
    ASSERT_TRUE(waitUntil([&] { return rig.screen->isCaptureSessionRunning() && unitsAtService(rig) > 0; }));

    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationSuspended);
    EXPECT_EQ(rig.screen->videoClient()->videoEncoder, nullptr);
    EXPECT_TRUE(rig.screen->isCaptureSessionRunning()) << "kept, so the way back is taken";
    settle(150);
    const int paused = unitsAtService(rig);
    settle(150);
    EXPECT_EQ(unitsAtService(rig), paused);

    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    ASSERT_TRUE(waitUntil([&] { return rig.system->devicesMade().size() == 2; }));
    EXPECT_TRUE(waitUntil([&] { return unitsAtService(rig) > paused; }));
}

// The service dies in the middle of the stream, with no close frame: the screen joins again, sends
// nothing until the service says it is ready again, and then starts over with a key frame, which
// is all the service's decoder can pick up from.
TEST(CaptureFlow, AStreamDroppedMidwayResumesAfterTheSecondJoinWithAKeyFrameFirst) {
    using Kind = RecordedFrame::Kind;
    auto framesOn = [](ScreenRig& rig, int connection) {
        std::vector<RecordedFrame> frames;
        for (const RecordedFrame& frame : rig.service.frames(Kind::binary))
            if (frame.connection == connection)
                frames.push_back(frame);
        return frames;
    };
    auto unitType = [](const RecordedFrame& frame) {
        return frame.payload.size() > 4 ? frame.payload[4] & 0x1f : -1;
    };
    const QByteArray join = R"({"cmd":"join","from":"u-1","fromMobile":false,"techCheck":false})";

    ScreenRig rig;
    ASSERT_TRUE(rig.streaming());
    // Well past the first key frame, so a resumed stream could go on with a predicted picture.
    ASSERT_TRUE(waitUntil([&] { return unitsAtService(rig) >= 12; }));
    rig.service.dropConnection();

    ASSERT_TRUE(waitUntil([&] { return !framesOn(rig, 1).empty(); }, 3000)) << "no second join";
    EXPECT_EQ(framesOn(rig, 1).front().payload, join);
    settle(300);
    EXPECT_EQ(framesOn(rig, 1).size(), 1u) << "no video before the service is ready again";

    rig.say(R"({"cmd":"nn-connected"})");
    ASSERT_TRUE(waitUntil([&] { return framesOn(rig, 1).size() >= 4; }));
    const auto resumed = framesOn(rig, 1);
    EXPECT_EQ(unitType(resumed[1]), 7) << "sequence parameter set";
    EXPECT_EQ(unitType(resumed[2]), 8) << "picture parameter set";
    EXPECT_EQ(unitType(resumed[3]), 5) << "key frame";
    EXPECT_EQ(rig.service.connectionCount(), 2);
}

TEST(CaptureFlow, CloseAsksFirstThenSaysGoodbyeAndTellsTheHost) {
    ScreenRig rig;
    ASSERT_TRUE(rig.streaming());
    auto* close = qobject_cast<QAbstractButton*>(
        rig.navigation->findChild<QWidget*>(QStringLiteral("TSRNativeKYCController.closeButton")));
    ASSERT_NE(close, nullptr);
    QTest::mouseClick(close, Qt::LeftButton);
    Alert* alert = rig.host.findChild<Alert*>(QStringLiteral("alert"));
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->text(), QStringLiteral("Сигурни ли сте, че искате да затворите екрана?"));
    EXPECT_EQ(alert->informativeText(),
              QStringLiteral("Ако го затворите преди да го изпратите, попълнените данни ще се загубят."));
    ASSERT_EQ(alert->buttons().size(), 2);
    EXPECT_EQ(alert->buttons()[0]->objectName(), QStringLiteral("cancelAction"));
    EXPECT_EQ(alert->buttons()[0]->text(), QStringLiteral("Остани"));
    EXPECT_EQ(alert->defaultButton(), alert->buttons()[0]);
    EXPECT_EQ(alert->buttons()[1]->objectName(), QStringLiteral("destroyAction"));
    QTest::mouseClick(alert->buttons()[1], Qt::LeftButton);
    EXPECT_EQ(rig.host.closedSteps, std::vector<QString>{QStringLiteral("d-kyc")});
    EXPECT_TRUE(rig.service.waitForFrames(RecordedFrame::Kind::close, 1));
}

TEST(CaptureFlow, TheScreenDarkensTheNavigationAndKeepsTheDisplayAwake) {
    HostHooks::instance().idleTimerDisabled = false;
    ScreenRig rig;
    EXPECT_EQ(rig.navigation->overrideUserInterfaceStyle(),
              TSRNavigationViewController::InterfaceStyle::dark);
    EXPECT_TRUE(HostHooks::instance().idleTimerDisabled);
    rig.navigation->hide();
    EXPECT_FALSE(HostHooks::instance().idleTimerDisabled);
}

} // namespace
} // namespace tessara::test
