#pragma once

#include "tessara/kyc/video/GeneratedCaptureDevice.h"

#include <QFile>
#include <QString>

namespace tessara {

// Plays raw NV12 frames of one size from a file, in a loop. The frames are what the output
// delivers (already upright), so the device advertises the sensor format they come from: frames of
// 1440x1920 give a 1920x1440 NV12 format, and format selection runs as with a real camera.
class FileCaptureDevice : public GeneratedCaptureDevice {
public:
    // `frameWidth` x `frameHeight` is the upright size of the frames in `path`.
    FileCaptureDevice(QString path, int frameWidth, int frameHeight, Options options);

    // The one format such a file offers.
    static CaptureFormat sensorFormat(int frameWidth, int frameHeight);
    // Whole frames in the file; 0 when it cannot be read.
    static qint64 frameCount(const QString& path, int frameWidth, int frameHeight);

protected:
    VideoFrame produce(int64_t index) override;
    bool portrait() const override { return true; }

private:
    QFile file_;
    int frameWidth_;
    int frameHeight_;
    qint64 frames_;
};

} // namespace tessara
