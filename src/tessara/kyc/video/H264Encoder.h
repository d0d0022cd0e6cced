#pragma once

#include "tessara/kyc/video/AnnexBFramer.h"
#include "tessara/kyc/video/CenterBandCrop.h"
#include "tessara/kyc/video/SampleBufferDelegate.h"
#include "tessara/kyc/video/VideoDimensions.h"

#include <QString>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>

class ISVCEncoder;

namespace tessara {

// Compresses camera frames to H.264 (baseline 4.1, a key frame at least every 60 pictures) and
// hands each unit, framed for the stream, to `naluHandling`. Frames are cropped to the centre band
// at the configured size. `configure` and the setters run before the encoder is attached to an
// output; `captureOutput` and every callback run on the output queue, one frame at a time.
class H264Encoder : public SampleBufferDelegate {
public:
    enum class ConfigurationError { cannotCreateSession, cannotSetProperties, cannotPrepareToEncode };

    class Error : public std::runtime_error {
    public:
        explicit Error(ConfigurationError code);
        ConfigurationError code;
    };

    // What one picture cost, for the tool's and the benchmark's figures.
    struct PictureReport {
        int64_t captureTimeNs = 0;
        int64_t encodeStartNs = 0;
        int64_t lastMessageNs = 0; // when the picture's last unit was handed on
        int units = 0;
        int64_t bytes = 0;
        bool keyFrame = false;
    };
    using PictureObserver = std::function<void(const PictureReport&)>;

    // `frameRate` and `cores` feed the encoder parameters; 0 cores means those of the host.
    explicit H264Encoder(double frameRate = 30.0, int cores = 0);
    ~H264Encoder() override;

    // Starts a session for pictures of `dimensions`; unchanged dimensions keep the running session.
    // Throws `Error`.
    void configure(VideoDimensions dimensions);
    VideoDimensions sessionVideoDimensions() const { return sessionVideoDimensions_; }

    AnnexBFramer::UnitHandler naluHandling;
    PictureObserver pictureObserver;

    // Crops and encodes one frame; its units reach `naluHandling` before this returns.
    void captureOutput(const VideoFrame& frame) override;
    // Frames resume after a gap: the next picture is a key frame, so the receiver decodes at once.
    void outputDidAttach() override;
    // The next picture is a key frame with its parameter sets in front. Safe from any thread.
    void forceKeyFrame() { keyFrameWanted_.store(true, std::memory_order_relaxed); }

private:
    struct EncoderDeleter {
        void operator()(ISVCEncoder* encoder) const;
    };

    double frameRate_;
    int cores_;
    VideoDimensions sessionVideoDimensions_;
    std::unique_ptr<ISVCEncoder, EncoderDeleter> session_;
    CenterBandCrop crop_;
    int64_t picturesEncoded_ = 0;
    std::atomic<bool> keyFrameWanted_{false};
};

QString toString(H264Encoder::ConfigurationError error);

} // namespace tessara
