#pragma once

#include "tessara/kyc/video/SyntheticCaptureDevice.h"
#include "tessara/kyc/video/SyntheticCaptureSystem.h"
#include "tessara/kyc/video/VideoCaptureManager.h"
#include "tessara/platform/NotificationBus.h"

#include <QCoreApplication>
#include <QObject>
#include <QVariantMap>
#include <memory>
#include <vector>

namespace tessara::testing {

inline CaptureFormat nv12(int width, int height, std::vector<FrameRateRange> ranges = {{1, 30}},
                          float fov = 69.0f) {
    return {CaptureFormat::kNV12VideoRange, width, height, std::move(ranges), fov};
}

// One synthetic camera at `position` with `formats`, authorised, unpaced unless told.
inline SyntheticCaptureSystem::Options oneCamera(CapturePosition position, std::vector<CaptureFormat> formats,
                                                 int focus = -1) {
    SyntheticCaptureSystem::Options options;
    options.cameras = {{position, {position, std::move(formats), focus, true, -1}}};
    return options;
}

// Lets the session queue finish what it holds, then delivers what it posted to the main thread.
inline void settle(VideoCaptureManager& manager) {
    manager.sessionQueue().sync([] {});
    QCoreApplication::processEvents();
}

// Records every dimensions notification.
class DimensionsRecorder : public QObject {
public:
    DimensionsRecorder() {
        NotificationBus::instance().subscribe(VideoCaptureManager::dimensionsNotificationName(), this,
                                              [this](const QVariantMap& info) { posts.push_back(info); });
    }
    ~DimensionsRecorder() override { NotificationBus::instance().unsubscribe(this); }
    std::vector<QVariantMap> posts;
};

} // namespace tessara::testing
