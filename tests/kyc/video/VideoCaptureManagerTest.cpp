#include "CaptureTestSupport.h"
#include "tessara/kyc/video/GeneratedCaptureDevice.h"
#include "tessara/kyc/video/QtCaptureSystem.h"

#include <QMediaDevices>
#include <QTest>
#include <gtest/gtest.h>
#include <optional>

namespace tessara {
namespace {

using testing::DimensionsRecorder;
using testing::nv12;
using testing::oneCamera;
using testing::settle;

struct Configured {
    std::shared_ptr<SyntheticCaptureSystem> system;
    std::unique_ptr<VideoCaptureManager> manager;

    GeneratedCaptureDevice& device() const { return *system->devicesMade().back(); }
};

Configured configure(SyntheticCaptureSystem::Options options,
                     CapturePosition position = CapturePosition::back, double rate = 30.0) {
    Configured c;
    c.system = std::make_shared<SyntheticCaptureSystem>(std::move(options));
    c.manager = std::make_unique<VideoCaptureManager>(c.system, nullptr, position, rate);
    settle(*c.manager);
    return c;
}

// The examples of format selection: NV12 video range only, width at most and height at least the
// desired 1920x1440, 4:3, and the portrait dimensions that follow; no notification without a choice.
TEST(VideoCaptureManager, SelectsTheFormatAndAnnouncesItsPortraitDimensions) {
    const CaptureFormat fullRange{CaptureFormat::kNV12FullRange, 1920, 1440, {{1, 30}}, 69.0f};
    struct Row {
        const char* name;
        std::vector<CaptureFormat> formats;
        std::optional<CaptureFormat> chosen;
    };
    const std::vector<Row> rows = {
        {"4:3 over 16:9", {nv12(1920, 1080), nv12(1920, 1440)}, nv12(1920, 1440)},
        {"too wide", {nv12(1280, 720), nv12(2592, 1936)}, std::nullopt},
        {"too low", {nv12(1280, 720)}, std::nullopt},
        {"full range only", {nv12(1280, 720), fullRange}, std::nullopt},
        {"4:3 but too low", {nv12(1440, 1080)}, std::nullopt},
        {"square beside 4:3", {nv12(1920, 1440), nv12(1920, 1920), nv12(1440, 1920)}, nv12(1920, 1440)},
        {"a phone's list", SyntheticCaptureDevice::phoneFormats(), nv12(1920, 1440)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        DimensionsRecorder recorder;
        const Configured c = configure(oneCamera(CapturePosition::back, row.formats));
        EXPECT_EQ(c.manager->setupResult(), SessionSetupResult::success);
        // Without a choice the camera keeps its default (its first format).
        EXPECT_EQ(c.device().activeFormat(), row.chosen.value_or(row.formats.front()));
        if (row.chosen) {
            EXPECT_EQ(c.manager->configuredVideoDimensions(), (VideoDimensions{1440, 1080}));
            ASSERT_EQ(recorder.posts.size(), 1u);
            EXPECT_EQ(recorder.posts[0].value("videoDimensions").value<VideoDimensions>(),
                      (VideoDimensions{1440, 1080}));
            EXPECT_EQ(recorder.posts[0].value("cameraPosition").toInt(), 1);
        } else {
            EXPECT_FALSE(c.manager->configuredVideoDimensions());
            EXPECT_TRUE(recorder.posts.empty());
        }
        EXPECT_FALSE(c.device().changedWithoutLock());
    }
}

TEST(VideoCaptureManagerDeathTest, APositionOutsideTheSizeTableIsFatal) {
    EXPECT_DEATH(
        {
            auto c = configure(oneCamera(CapturePosition::unspecified, {nv12(1920, 1440)}),
                               CapturePosition::unspecified);
        },
        "No desired video dimensions for camera position 0");
}

// The rate is pinned (min = max duration, rate truncated) only inside the first range.
TEST(VideoCaptureManager, PinsTheFrameRateOnlyWithinTheFirstRange) {
    struct Row {
        std::vector<FrameRateRange> ranges;
        double rate;
        FrameDuration expected;
    };
    const Row rows[] = {
        {{{1, 30}}, 30.0, {1, 30}},  {{{1, 24}}, 30.0, {}}, {{{1, 60}}, 29.97, {1, 29}},
        {{{30, 60}}, 15.0, {}},      {{}, 30.0, {}},        {{{1, 24}, {1, 30}}, 30.0, {}},
        {{{30, 30}}, 30.0, {1, 30}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << "rate " << row.rate << " first range "
                                          << (row.ranges.empty() ? 0 : row.ranges[0].maxFrameRate));
        const Configured c = configure(oneCamera(CapturePosition::back, {nv12(1920, 1440, row.ranges)}),
                                       CapturePosition::back, row.rate);
        EXPECT_EQ(c.device().activeVideoMinFrameDuration(), row.expected);
        EXPECT_EQ(c.device().activeVideoMaxFrameDuration(), row.expected);
    }
}

// Zoom by the nearest focus: the document size picked by focus distance (80 mm from 121 to 150,
// 70 from 151 to 200, 85 otherwise), a zoom only when the focus lies beyond the distance at which
// the document fills the picture, never for the front camera. Field of view 69 degrees.
TEST(VideoCaptureManager, ZoomsTheBackCameraByItsFocusDistance) {
    struct Row {
        CapturePosition position;
        int focus;
        double zoom;
    };
    const Row rows[] = {
        {CapturePosition::back, 130, 1.0051484}, {CapturePosition::back, 151, 1.3343069},
        {CapturePosition::back, 200, 1.7672939}, {CapturePosition::back, 201, 1.4626956},
        {CapturePosition::back, 120, 1.0},       {CapturePosition::back, -1, 1.0},
        {CapturePosition::front, 200, 1.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << "position " << int(row.position) << " focus " << row.focus);
        const Configured c = configure(oneCamera(row.position, {nv12(1920, 1440)}, row.focus), row.position);
        EXPECT_NEAR(c.device().videoZoomFactor(), row.zoom, 1e-6);
        EXPECT_FALSE(c.device().changedWithoutLock());
    }
}

// Each permission answer, what it leaves, and the line `startRunning` prints.
TEST(VideoCaptureManager, PermissionDecidesWhetherTheSessionIsConfigured) {
    struct Row {
        AuthorizationStatus status;
        bool grants;
        SessionSetupResult result;
        int requests;
        const char* printed;
    };
    const Row rows[] = {
        {AuthorizationStatus::authorized, false, SessionSetupResult::success, 0, ""},
        {AuthorizationStatus::notDetermined, true, SessionSetupResult::success, 1, ""},
        {AuthorizationStatus::notDetermined, false, SessionSetupResult::notAuthorized, 1,
         "camera usage not authorized\n"},
        {AuthorizationStatus::denied, true, SessionSetupResult::notAuthorized, 0,
         "camera usage not authorized\n"},
        {AuthorizationStatus::restricted, true, SessionSetupResult::notAuthorized, 0,
         "camera usage not authorized\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << "status " << int(row.status) << " grants " << row.grants);
        SyntheticCaptureSystem::Options options = oneCamera(CapturePosition::back, {nv12(1920, 1440)});
        options.status = row.status;
        options.grantsWhenAsked = row.grants;
        // A late answer: configuration must still wait for it.
        options.answerDelayMs = 30;
        const Configured c = configure(options);
        EXPECT_EQ(c.system->accessRequests(), row.requests);
        const bool configured = row.result == SessionSetupResult::success;
        EXPECT_EQ(c.system->devicesMade().size(), configured ? 1u : 0u);
        EXPECT_EQ(c.manager->configuredVideoDimensions().has_value(), configured);

        std::optional<SessionSetupResult> started;
        ::testing::internal::CaptureStdout();
        c.manager->startRunning([&](SessionSetupResult result) { started = result; });
        settle(*c.manager);
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), row.printed);
        EXPECT_EQ(started, row.result);
        EXPECT_EQ(c.manager->session().isRunning(), configured);
    }
}

TEST(VideoCaptureManager, WithoutACameraConfigurationFails) {
    SyntheticCaptureSystem::Options options;
    options.cameras.clear();
    const Configured c = configure(options);
    EXPECT_EQ(c.manager->setupResult(), SessionSetupResult::configurationFailed);
    ::testing::internal::CaptureStdout();
    c.manager->startRunning({});
    settle(*c.manager);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "configuration failed\n");
}

// The system camera's route on a machine without one: no default device, configuration fails.
TEST(VideoCaptureManager, TheSystemCameraWithoutACameraFailsConfiguration) {
    if (!QMediaDevices::videoInputs().isEmpty())
        GTEST_SKIP() << "this machine has a camera";
    VideoCaptureManager manager(std::make_shared<QtCaptureSystem>(), nullptr, CapturePosition::back, 30.0);
    settle(manager);
    EXPECT_EQ(manager.setupResult(), SessionSetupResult::configurationFailed);
}

// A running session hands portrait frames to the delegate on the output queue; a camera change
// keeps the session running and announces the new camera.
TEST(VideoCaptureManager, DeliversPortraitFramesAndAnnouncesACameraChange) {
    struct Recorder : SampleBufferDelegate {
        std::atomic<int> frames{0};
        std::atomic<int> width{0}, height{0};
        void captureOutput(const VideoFrame& frame) override {
            width = frame.width;
            height = frame.height;
            ++frames;
        }
    };
    DimensionsRecorder notifications;
    SyntheticCaptureSystem::Options options;
    options.cameras[CapturePosition::back].formats = {nv12(1280, 720), nv12(1920, 1440)};
    options.cameras[CapturePosition::front].formats = {nv12(1280, 720), nv12(1920, 1440)};
    Configured c = configure(options);
    auto recorder = std::make_shared<Recorder>();
    c.manager->videoOutput().setSampleBufferDelegate(recorder, &c.manager->videoOutputQueue());
    c.manager->startRunning({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return recorder->frames >= 2; }, 5000));
    EXPECT_EQ(recorder->width, 1440);
    EXPECT_EQ(recorder->height, 1920);

    c.manager->videoOutput().setSampleBufferDelegate(nullptr, nullptr);
    c.manager->changeCamera(CapturePosition::front, 30.0);
    settle(*c.manager);
    EXPECT_TRUE(c.manager->session().isRunning());
    ASSERT_EQ(c.manager->session().inputs().size(), 1u);
    EXPECT_EQ(c.manager->session().inputs()[0]->position(), CapturePosition::front);
    ASSERT_EQ(notifications.posts.size(), 2u);
    EXPECT_EQ(notifications.posts[1].value("cameraPosition").toInt(), 2);
    EXPECT_EQ(c.manager->videoOutput().videoRotationAngle(), 90);
}

} // namespace
} // namespace tessara
