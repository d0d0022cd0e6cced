#include "tessara/kyc/video/H264Encoder.h"

#include "tessara/kyc/video/H264EncoderParameters.h"
#include "tessara/platform/Logging.h"

#include <chrono>
#include <thread>
#include <wels/codec_api.h>

namespace tessara {

namespace {

int64_t nowNs() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

QString toString(H264Encoder::ConfigurationError error) {
    switch (error) {
    case H264Encoder::ConfigurationError::cannotCreateSession:
        return QStringLiteral("cannotCreateSession");
    case H264Encoder::ConfigurationError::cannotSetProperties:
        return QStringLiteral("cannotSetProperties");
    case H264Encoder::ConfigurationError::cannotPrepareToEncode:
        return QStringLiteral("cannotPrepareToEncode");
    }
    return {};
}

H264Encoder::Error::Error(ConfigurationError error)
    : std::runtime_error(toString(error).toStdString())
    , code(error) {}

void H264Encoder::EncoderDeleter::operator()(ISVCEncoder* encoder) const {
    encoder->Uninitialize();
    WelsDestroySVCEncoder(encoder);
}

H264Encoder::H264Encoder(double frameRate, int cores)
    : frameRate_(frameRate)
    , cores_(cores > 0 ? cores : int(std::max(1u, std::thread::hardware_concurrency()))) {}

H264Encoder::~H264Encoder() = default;

void H264Encoder::configure(VideoDimensions dimensions) {
    if (dimensions == sessionVideoDimensions_)
        return;
    sessionVideoDimensions_ = dimensions;
    session_.reset();
    picturesEncoded_ = 0;

    ISVCEncoder* raw = nullptr;
    if (WelsCreateSVCEncoder(&raw) != 0 || raw == nullptr)
        throw Error(ConfigurationError::cannotCreateSession);
    std::unique_ptr<ISVCEncoder, void (*)(ISVCEncoder*)> created(raw, WelsDestroySVCEncoder);
    // The library's own warnings would land on the host's standard error; failures still come back
    // as results and are logged in the SDK's category.
    int traceLevel = WELS_LOG_ERROR;
    raw->SetOption(ENCODER_OPTION_TRACE_LEVEL, &traceLevel);

    const SEncParamExt parameters = H264EncoderParameters::make(dimensions, frameRate_, cores_);
    if (raw->InitializeExt(&parameters) != cmResultSuccess)
        throw Error(ConfigurationError::cannotSetProperties);
    int format = videoFormatI420;
    if (raw->SetOption(ENCODER_OPTION_DATAFORMAT, &format) != cmResultSuccess) {
        raw->Uninitialize();
        throw Error(ConfigurationError::cannotPrepareToEncode);
    }
    session_.reset(created.release());
}

void H264Encoder::outputDidAttach() {
    if (picturesEncoded_ > 0)
        forceKeyFrame();
}

void H264Encoder::captureOutput(const VideoFrame& frame) {
    if (!session_)
        return;
    const VideoFrame band = crop_.crop(frame, sessionVideoDimensions_);
    if (band.isEmpty()) {
        qCCritical(lcVideoCapture, "frame %dx%d is smaller than the encoder's %dx%d", frame.width,
                   frame.height, sessionVideoDimensions_.width, sessionVideoDimensions_.height);
        return;
    }

    PictureReport report;
    report.captureTimeNs = frame.captureTimeNs;
    report.encodeStartNs = nowNs();

    SSourcePicture picture{};
    picture.iColorFormat = videoFormatI420;
    picture.iPicWidth = band.width;
    picture.iPicHeight = band.height;
    for (int i = 0; i < 3; ++i) {
        picture.iStride[i] = band.strides[i];
        picture.pData[i] = const_cast<unsigned char*>(band.planes[i]);
    }
    picture.uiTimeStamp = frame.captureTimeNs / 1000000;

    if (keyFrameWanted_.exchange(false, std::memory_order_relaxed))
        session_->ForceIntraFrame(true);

    SFrameBSInfo output{};
    const int status = session_->EncodeFrame(&picture, &output);
    if (status != cmResultSuccess) {
        qCCritical(lcVideoCapture, "encoding failed with error %d", status);
        return;
    }
    if (output.eFrameType == videoFrameTypeSkip) {
        qCCritical(lcVideoCapture, "frame dropped");
        return;
    }
    ++picturesEncoded_;
    report.keyFrame = output.eFrameType == videoFrameTypeIDR;
    if (naluHandling) {
        report.units = AnnexBFramer::emit(output, [&](QByteArray unit) {
            report.bytes += unit.size();
            naluHandling(std::move(unit));
        });
    }
    report.lastMessageNs = nowNs();
    if (pictureObserver)
        pictureObserver(report);
}

} // namespace tessara
