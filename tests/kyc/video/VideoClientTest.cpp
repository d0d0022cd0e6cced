#include "tessara/kyc/video/VideoClient.h"

#include "CaptureTestSupport.h"
#include "VideoTestSupport.h"

#include <QTest>
#include <gtest/gtest.h>
#include <mutex>

namespace tessara {
namespace {

using testing::unitType;

QVariantMap dimensionsInfo(VideoDimensions dimensions, int position) {
    return {{QStringLiteral("videoDimensions"), QVariant::fromValue(dimensions)},
            {QStringLiteral("cameraPosition"), position}};
}

// Same dimensions keep the encoder (and its stream), other dimensions replace it.
TEST(VideoClient, EnsureEncoderKeepsAnEncoderOfTheSameSize) {
    struct Row {
        VideoDimensions first, second;
        bool kept;
    };
    const Row rows[] = {
        {{1440, 1080}, {1440, 1080}, true},
        {{1440, 1080}, {1080, 810}, false},
        {{320, 240}, {240, 320}, false},
    };
    for (const Row& row : rows) {
        VideoClient client(
            nullptr, [](QByteArray) {}, std::make_shared<SyntheticCaptureSystem>());
        client.ensureEncoder(row.first);
        const H264Encoder* first = client.videoEncoder.get();
        client.ensureEncoder(row.second);
        EXPECT_EQ(client.videoEncoder.get() == first, row.kept);
        EXPECT_EQ(client.videoEncoder->sessionVideoDimensions(), row.second);
        EXPECT_TRUE(client.videoEncoder->naluHandling);
    }
}

TEST(VideoClient, AnEncoderThatCannotBeConfiguredIsPrintedAndLeftOut) {
    VideoClient client(
        nullptr, [](QByteArray) {}, std::make_shared<SyntheticCaptureSystem>());
    client.compressionIsRunning = true;
    ::testing::internal::CaptureStdout();
    NotificationBus::instance().post(VideoCaptureManager::dimensionsNotificationName(),
                                     dimensionsInfo({-16, 16}, 1));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "cannotSetProperties\n");
    EXPECT_FALSE(client.hasCaptureManager()) << "nothing was attached";
}

TEST(VideoClientDeathTest, ANotificationWithoutItsEntriesIsFatal) {
    VideoClient client(
        nullptr, [](QByteArray) {}, std::make_shared<SyntheticCaptureSystem>());
    EXPECT_DEATH(NotificationBus::instance().post(VideoCaptureManager::dimensionsNotificationName(),
                                                  {{QStringLiteral("cameraPosition"), 1}}),
                 "lacks videoDimensions");
}

// The whole path: the camera's notification makes the encoder, frames flow while compression runs,
// and a switch to a camera of the same size keeps the encoder; its stream resumes with a key frame.
TEST(VideoClient, CameraToUnitsAndACameraSwitchKeepsTheStream) {
    std::mutex mutex;
    QList<QByteArray> units;
    VideoClient client(
        nullptr,
        [&](QByteArray unit) {
            std::lock_guard lock(mutex);
            units.append(std::move(unit));
        },
        std::make_shared<SyntheticCaptureSystem>());
    auto count = [&] {
        std::lock_guard lock(mutex);
        return units.size();
    };
    client.compressionIsRunning = true;
    VideoCaptureManager& manager = client.captureManager();
    manager.startRunning({});
    testing::settle(manager);
    ASSERT_TRUE(client.videoEncoder);
    EXPECT_EQ(client.videoEncoder->sessionVideoDimensions(), (VideoDimensions{1440, 1080}));
    EXPECT_EQ(client.currentCameraPosition, CapturePosition::back);
    ASSERT_TRUE(QTest::qWaitFor([&] { return count() >= 4; }, 5000));

    const H264Encoder* encoder = client.videoEncoder.get();
    client.stopCompression();
    manager.videoOutputQueue().sync([] {});
    {
        std::lock_guard lock(mutex);
        EXPECT_EQ(unitType(units.first()), 7);
        units.clear();
    }
    client.compressionIsRunning = true; // wanted again once the new camera is announced
    manager.changeCamera(CapturePosition::front, 30.0);
    testing::settle(manager);
    EXPECT_EQ(client.currentCameraPosition, CapturePosition::front);
    EXPECT_EQ(client.videoEncoder.get(), encoder);
    ASSERT_TRUE(QTest::qWaitFor([&] { return count() >= 1; }, 5000));
    std::lock_guard lock(mutex);
    EXPECT_EQ(unitType(units.first()), 7) << "the resumed stream starts with its parameter sets";
}

} // namespace
} // namespace tessara
