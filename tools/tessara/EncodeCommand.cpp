#include "EncodeCommand.h"

#include "tessara/kyc/video/FileCaptureDevice.h"
#include "tessara/kyc/video/FileCaptureSystem.h"
#include "tessara/kyc/video/SyntheticCaptureSystem.h"
#include "tessara/kyc/video/VideoClient.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <cstdio>

namespace tessara::tool {

namespace {

void writeErr(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fflush(stderr);
}

double milliseconds(int64_t ns) {
    return double(ns) / 1e6;
}

// The value below which `share` of the values lie (nearest rank).
double percentile(std::vector<int64_t> values, double share) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const size_t rank = size_t(std::max(1.0, std::ceil(share * double(values.size())))) - 1;
    return milliseconds(values[std::min(rank, values.size() - 1)]);
}

std::shared_ptr<CaptureSystem> makeSystem(const EncodeCommand::Options& o) {
    const bool paced = o.realtime;
    if (!o.filePath.isEmpty()) {
        FileCaptureSystem::Options file;
        file.path = o.filePath;
        file.frameWidth = o.width.value_or(1440);
        file.frameHeight = o.height.value_or(1920);
        file.position = o.position;
        file.paced = paced;
        file.frameLimit = o.frames;
        return std::make_shared<FileCaptureSystem>(file);
    }
    SyntheticCaptureSystem::Options synthetic;
    synthetic.cameras.clear();
    GeneratedCaptureDevice::Options camera = SyntheticCaptureSystem::defaultCameras().at(o.position);
    if (o.width)
        camera.formats = {{CaptureFormat::kNV12VideoRange, *o.height, *o.width, {{1, 30}}, 69.0f}};
    // The camera runs at the rate asked for, when it can.
    for (CaptureFormat& format : camera.formats)
        for (FrameRateRange& range : format.videoSupportedFrameRateRanges)
            range.maxFrameRate = std::max(range.maxFrameRate, o.fps);
    camera.paced = paced;
    camera.frameLimit = o.frames;
    synthetic.cameras[o.position] = camera;
    return std::make_shared<SyntheticCaptureSystem>(synthetic);
}

} // namespace

EncodeCommand::EncodeCommand(Options options)
    : options_(std::move(options)) {}

QString EncodeCommand::summary(const std::vector<H264Encoder::PictureReport>& pictures, double fps) {
    int64_t units = 0, bytes = 0;
    std::vector<int> keyFrames;
    std::vector<int64_t> encodeTimes, latencies;
    for (size_t i = 0; i < pictures.size(); ++i) {
        const H264Encoder::PictureReport& p = pictures[i];
        units += p.units;
        bytes += p.bytes;
        if (p.keyFrame)
            keyFrames.push_back(int(i));
        encodeTimes.push_back(p.lastMessageNs - p.encodeStartNs);
        latencies.push_back(p.lastMessageNs - p.captureTimeNs);
    }
    QString keyList;
    int largestSpacing = 0;
    for (size_t k = 0; k < keyFrames.size(); ++k) {
        keyList += QLatin1Char(' ') + QString::number(keyFrames[k]);
        if (k > 0)
            largestSpacing = std::max(largestSpacing, keyFrames[k] - keyFrames[k - 1]);
    }
    const double bitRate = pictures.empty() ? 0 : double(bytes) * 8.0 * fps / double(pictures.size());
    QString text;
    text += QStringLiteral("pictures: %1\n").arg(pictures.size());
    text += QStringLiteral("units: %1\n").arg(units);
    text += QStringLiteral("bytes: %1\n").arg(bytes);
    text += QStringLiteral("key frames: %1 at%2\n").arg(keyFrames.size()).arg(keyList);
    text += QStringLiteral("largest key frame spacing: %1\n")
                .arg(keyFrames.size() > 1 ? QString::number(largestSpacing) : QStringLiteral("-"));
    text += QStringLiteral("bit rate: %1 kbit/s at %2 fps\n").arg(bitRate / 1000.0, 0, 'f', 1).arg(fps);
    text += QStringLiteral("encode time per picture: median %1 ms, p99 %2 ms\n")
                .arg(percentile(encodeTimes, 0.5), 0, 'f', 2)
                .arg(percentile(encodeTimes, 0.99), 0, 'f', 2);
    text += QStringLiteral("capture to message: median %1 ms, p99 %2 ms\n")
                .arg(percentile(latencies, 0.5), 0, 'f', 2)
                .arg(percentile(latencies, 0.99), 0, 'f', 2);
    return text;
}

int EncodeCommand::run() {
    if (!options_.filePath.isEmpty() &&
        FileCaptureDevice::frameCount(options_.filePath, options_.width.value_or(1440),
                                      options_.height.value_or(1920)) == 0) {
        writeErr(QStringLiteral("tessara: %1 holds no whole frame of that size.\n").arg(options_.filePath));
        return 1;
    }
    std::FILE* out = std::fopen(QFile::encodeName(options_.output).constData(), "wb");
    if (!out) {
        writeErr(QStringLiteral("tessara: cannot write %1.\n").arg(options_.output));
        return 1;
    }

    // Written on the output queue only; read here once every picture has been reported.
    std::vector<H264Encoder::PictureReport> pictures;
    std::atomic<int64_t> reported{0};
    VideoClient client(
        nullptr, [out](QByteArray unit) { std::fwrite(unit.constData(), 1, size_t(unit.size()), out); },
        makeSystem(options_));
    client.initialCameraPosition = options_.position;
    client.desiredFrameRate = options_.fps;
    client.pictureObserver = [&](const H264Encoder::PictureReport& report) {
        pictures.push_back(report);
        ++reported;
    };
    client.compressionIsRunning = true;

    VideoCaptureManager& manager = client.captureManager();
    // Every frame the camera makes is encoded: the tool waits rather than drop.
    manager.videoOutput().alwaysDiscardsLateVideoFrames = false;
    manager.sessionQueue().sync([] {});
    QCoreApplication::processEvents(); // the dimensions notification makes the encoder
    int status = 0;
    if (manager.setupResult() != SessionSetupResult::success) {
        writeErr(QStringLiteral("tessara: the camera could not be configured.\n"));
        status = 1;
    } else if (!client.videoEncoder) {
        writeErr(QStringLiteral("tessara: the camera offers no NV12 4:3 format of at least 1920x1440; "
                                "nothing to encode.\n"));
        status = 1;
    } else {
        manager.startRunning({});
        // A camera that stops short (a frame the encoder refused) must not hang the tool.
        QElapsedTimer sinceProgress;
        sinceProgress.start();
        int64_t seen = 0;
        while (reported.load() < options_.frames) {
            QThread::msleep(2);
            if (reported.load() != seen) {
                seen = reported.load();
                sinceProgress.restart();
            } else if (sinceProgress.elapsed() > 10000) {
                writeErr(QStringLiteral("tessara: no picture for 10 s; stopping after %1.\n").arg(seen));
                status = 1;
                break;
            }
        }
        manager.stop();
        manager.sessionQueue().sync([] {});
    }
    client.stopCompression();
    client.resetCaptureManager(); // ends the camera and drains the output queue
    std::fclose(out);
    if (status == 0)
        std::fputs(summary(pictures, options_.fps).toUtf8().constData(), stdout);
    std::fflush(stdout);
    return status;
}

} // namespace tessara::tool
