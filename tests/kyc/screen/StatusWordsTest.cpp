#include "ScreenTestSupport.h"
#include "tessara/kyc/signalling/TSRNativeSignallingClient.h"
#include "tessara/kyc/video/TSRCameraPreviewView.h"
#include "tessara/ui/ActivityIndicator.h"
#include "tessara/ui/BusyButton.h"

#include <QLabel>

namespace tessara::test {
namespace {

class StatusWords : public ::testing::Test {
protected:
    void SetUp() override { HostHooks::instance().hapticCount = 0; }
};

// One row per line of the status table, each on a screen that streams the document.
TEST_F(StatusWords, EachRowOfTheTableActsOnTheScreen) {
    struct Row {
        const char* word;
        bool selfie, capturing, idFrame, spinning, preview, service, button;
        const char* text;
    };
    const Row rows[] = {
        {"KYC_STATUS_SELFIE_OK", false, false, false, false, true, true, true, "Готово"},
        {"KYC_STATUS_IMAGE_BLURRED", false, true, false, true, true, true, false, "Размазано"},
        {"KYC_STATUS_ID_PREPARE_FACE", false, true, true, false, true, true, false,
         "Поставете личната карта в рамката"},
        {"KYC_STATUS_SELFIE_PREPARE_HEAD", true, true, false, true, true, true, false,
         "Погледнете в камерата"},
        {"STOP_MEDIA", false, false, false, true, false, true, false, "Пауза"},
        {"NO_NN_SERVER", false, true, false, true, true, false, false, "Няма услуга"},
        {"SOMETHING_NEW", false, true, false, true, true, true, false, "Друго"},
        {"KYC_STATUS_ROI_NOT_FOUND", false, true, false, true, true, true, false, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.word);
        ScreenRig rig;
        ASSERT_TRUE(rig.streaming());
        rig.status(row.word);
        TSRNativeKYCController& s = *rig.screen;
        EXPECT_EQ(s.status(), QString::fromLatin1(row.word));
        EXPECT_EQ(s.checkingSelfie(), row.selfie);
        EXPECT_EQ(s.currentCameraPosition(), row.selfie ? CapturePosition::front : CapturePosition::back);
        EXPECT_EQ(s.isCaptureSessionRunning(), row.capturing);
        EXPECT_EQ(rig.shown("idCardCutoutImageView"), row.idFrame);
        EXPECT_EQ(s.spinnerView()->isAnimating(), row.spinning);
        EXPECT_EQ(s.videoView()->isVisible(), row.preview);
        EXPECT_EQ(s.isServiceAvailable(), row.service);
        EXPECT_EQ(s.continueButton()->isVisible(), row.button);
        EXPECT_EQ(s.guidance()->instructionsLabel()->text(), QString::fromUtf8(row.text));
        EXPECT_EQ(s.guidance()->instructionsLabel()->isVisible(), *row.text != '\0');
        EXPECT_EQ(HostHooks::instance().hapticCount, 1);
        HostHooks::instance().hapticCount = 0;
    }
}

TEST_F(StatusWords, ARepeatedWordChangesNothingAndIsNotFeltTwice) {
    ScreenRig rig;
    ASSERT_TRUE(rig.streaming());
    rig.status("KYC_STATUS_IMAGE_BLURRED");
    rig.screen->guidance()->setInstructionsText(QStringLiteral("changed meanwhile"));
    rig.status("KYC_STATUS_IMAGE_BLURRED");
    EXPECT_EQ(rig.screen->guidance()->instructionsLabel()->text(), QStringLiteral("changed meanwhile"));
    EXPECT_EQ(HostHooks::instance().hapticCount, 1);
    rig.status("KYC_STATUS_ROI_NOT_FOUND");
    EXPECT_EQ(HostHooks::instance().hapticCount, 2);
}

// The step ends: bye on the wire, socket closed, and 100 ms later the step is sent toward the
// document's own direction, whatever the outcome word.
TEST_F(StatusWords, ATerminalWordSaysGoodbyeAndLeavesTowardTheStepsDirectionAfter100Ms) {
    for (const char* word :
         {"KYC_STATUS_SELFIE_OK", "KYC_STATUS_FAILED", "PROCESS_SUCCESS", "PROCESS_FAIL"}) {
        SCOPED_TRACE(word);
        ScreenRig rig;
        rig.backend.enqueue(
            CannedResponse::json(200, R"({"type":"FORM","directionId":"d-next","fields":[]})"));
        ASSERT_TRUE(rig.streaming());
        QElapsedTimer clock;
        clock.start();
        rig.status(word);
        EXPECT_EQ(rig.screen->signallingClient()->webSocket(), nullptr);
        ASSERT_TRUE(rig.service.waitForFrames(RecordedFrame::Kind::close, 1));
        const auto binaries = rig.service.frames(RecordedFrame::Kind::binary);
        bool bye = false;
        for (const RecordedFrame& frame : binaries)
            bye = bye || frame.payload == R"({"cmd":"bye","from":"u-1"})";
        EXPECT_TRUE(bye);

        ASSERT_TRUE(rig.backend.waitForRequests(1));
        EXPECT_GE(clock.elapsed(), TSRNativeKYCController::kRedirectionDelayMs);
        const RecordedRequest& request = rig.backend.requests()[0];
        EXPECT_EQ(request.path(), "/api/step");
        EXPECT_EQ(request.body,
                  R"({"directionId":"d-kyc","fields":[],"fromDirectionId":"d-kyc","submissionId":"s-1"})");
        EXPECT_TRUE(waitUntil(
            [&] { return rig.navigation->visibleViewController()->directionIdText() == "d-next"; }));
    }
}

TEST_F(StatusWords, NoServiceRoutesTheNextLeavingToTheNoServiceStep) {
    ScreenRig rig({{"noServiceDirectionStepId", "d-noservice"}});
    ASSERT_TRUE(rig.streaming());
    rig.status("NO_NN_SERVER");
    EXPECT_TRUE(rig.screen->isCaptureSessionRunning()) << "streaming goes on";
    rig.status("KYC_STATUS_SELFIE_OK");
    ASSERT_TRUE(rig.backend.waitForRequests(1));
    EXPECT_TRUE(rig.backend.requests()[0].body.contains(R"("directionId":"d-noservice")"));
}

// Without a video stream the user leaves by the button, toward failedNoVideoStream; without that
// setting the button spins and stays disabled.
TEST_F(StatusWords, NoVideoStreamWaitsForTheButton) {
    for (const bool withTarget : {true, false}) {
        SCOPED_TRACE(withTarget);
        ScreenRig rig(withTarget ? QJsonObject{{"failedNoVideoStream", "d-novideo"}} : QJsonObject{});
        rig.backend.enqueue(
            CannedResponse::json(200, R"({"type":"FORM","directionId":"d-next","fields":[]})"));
        ASSERT_TRUE(rig.joined());
        rig.status("FAILED_NO_VIDEO_STREAM_CONNECTION");
        BusyButton* button = rig.screen->continueButton();
        EXPECT_TRUE(button->isVisible());
        EXPECT_EQ(rig.screen->guidance()->instructionsLabel()->text(), QStringLiteral("Няма видео"));
        settle(TSRNativeKYCController::kRedirectionDelayMs + 50);
        EXPECT_EQ(rig.backend.requestCount(), 0) << "no automatic leaving";

        QTest::mouseClick(button, Qt::LeftButton);
        if (withTarget) {
            ASSERT_TRUE(rig.backend.waitForRequests(1));
            EXPECT_TRUE(rig.backend.requests()[0].body.contains(R"("directionId":"d-novideo")"));
        } else {
            settle(100);
            EXPECT_EQ(rig.backend.requestCount(), 0);
            EXPECT_TRUE(button->showsActivityIndicator());
            EXPECT_FALSE(button->isEnabled());
        }
    }
}

TEST_F(StatusWords, AFailedSubmissionGivesTheButtonBack) {
    ScreenRig rig;
    rig.backend.enqueue(CannedResponse::json(500, R"({"message":"nope"})"));
    ASSERT_TRUE(rig.joined());
    ::testing::internal::CaptureStdout();
    rig.status("KYC_STATUS_FAILED");
    ASSERT_TRUE(rig.backend.waitForRequests(1));
    EXPECT_TRUE(waitUntil([&] { return rig.screen->continueButton()->isEnabled(); }));
    EXPECT_FALSE(::testing::internal::GetCapturedStdout().empty()) << "the error is printed";
    EXPECT_FALSE(rig.screen->continueButton()->showsActivityIndicator());
}

// Status asked over HTTP feeds the same handling; two answers are applied as they arrive.
TEST_F(StatusWords, PolledStatusIsAppliedInArrivalOrder) {
    ScreenRig rig;
    ASSERT_TRUE(rig.joined());
    rig.backend.enqueue(CannedResponse::json(200, R"({"code":"KYC_STATUS_IMAGE_BLURRED","message":"m"})"));
    rig.backend.enqueue(CannedResponse::json(200, R"({"code":"NO_NN_SERVER","message":"m"})"));
    rig.screen->getKYCStatus();
    rig.screen->getKYCStatus();
    ASSERT_TRUE(rig.backend.waitForRequests(2));
    EXPECT_EQ(rig.backend.requests()[0].path(), "/api/step/v3/status/kyc/s-1/u-1");
    EXPECT_TRUE(waitUntil([&] { return !rig.screen->isServiceAvailable(); }));
    EXPECT_EQ(rig.screen->status(), QStringLiteral("NO_NN_SERVER"));
    EXPECT_EQ(HostHooks::instance().hapticCount, 2);

    // An answer without a message does not decode and is dropped.
    rig.backend.enqueue(CannedResponse::json(200, R"({"code":"STOP_MEDIA"})"));
    rig.screen->getKYCStatus();
    ASSERT_TRUE(rig.backend.waitForRequests(3));
    settle(50);
    EXPECT_EQ(rig.screen->status(), QStringLiteral("NO_NN_SERVER"));
}

} // namespace
} // namespace tessara::test
