#include "backend/VerificationSession.h"

namespace tessara {

namespace {

using Guidance = VerificationPhase::Guidance;

// A held phase repeats its guidance at this rhythm.
constexpr int kHeldSpan = 24;

// The touch target, as the service places it: the origin in fractions of the preview, the size in
// points. The fingertip is reported mirrored (the front camera), so it travels from the lower left
// of the picture to x 0.30, which the client shows over the target.
constexpr double kTargetX = 0.6, kTargetY = 0.35, kTargetSize = 64;
constexpr double kFingerFromX = 0.85, kFingerFromY = 0.85, kFingerToX = 0.30, kFingerToY = 0.45;

} // namespace

VerificationSession::VerificationSession(VerificationScript script)
    : script_(std::move(script)) {}

bool VerificationSession::selfiePhase() const {
    if (phase_ >= script_.phases.size())
        return false;
    const Guidance guidance = script_.phases[phase_].guidance;
    return guidance == Guidance::face || guidance == Guidance::touch;
}

void VerificationSession::send(SignalMessage message, Actions& out) {
    if (const auto* status = std::get_if<KYCStatusSignal>(&message))
        status_ = status->type;
    out.push_back({Action::Kind::send, std::move(message)});
}

VerificationSession::Actions VerificationSession::join() {
    Actions out;
    if (finished_)
        return out;
    ++joins_;
    send(KYCStartCameraSignal{WSCommand::startCamera,
                              selfiePhase() ? KYCCameraPosition::front : KYCCameraPosition::back},
         out);
    if (script_.connectsService)
        send(NNConnectedCommand{}, out);
    if (joins_ == 1)
        enterPhase(0, out);
    return out;
}

void VerificationSession::enterPhase(size_t index, Actions& out) {
    phase_ = index;
    count_ = 0;
    if (phase_ >= script_.phases.size()) {
        if (!script_.finalStatus.isEmpty()) {
            send(KYCStatusSignal{WSCommand::status, script_.finalStatus}, out);
            finished_ = true;
        }
        return;
    }
    const VerificationPhase& phase = script_.phases[phase_];
    send(KYCStatusSignal{WSCommand::status, phase.status}, out);
    if (phase.pictures == 0 && phase.waitMs >= 0)
        out.push_back({Action::Kind::wait, NNConnectedCommand{}, phase.waitMs, int(phase_)});
}

VerificationSession::Actions VerificationSession::waitElapsed(int token) {
    Actions out;
    if (finished_ || token != int(phase_))
        return out;
    enterPhase(phase_ + 1, out);
    return out;
}

VerificationSession::Actions VerificationSession::picture(int width, int height) {
    Actions out;
    // Without "nn-connected" the client should send nothing, and whatever it sends is not looked at.
    if (finished_ || !script_.connectsService || joins_ == 0 || phase_ >= script_.phases.size())
        return out;
    if (width != VerificationScript::kWidth || height != VerificationScript::kHeight)
        return out;
    const VerificationPhase& phase = script_.phases[phase_];
    ++count_;
    guide(phase, count_, out);
    if (phase.dropAfterPictures == count_ && !dropped_) {
        dropped_ = true;
        out.push_back({Action::Kind::drop, NNConnectedCommand{}});
    }
    if (phase.pictures > 0 && count_ >= phase.pictures)
        enterPhase(phase_ + 1, out);
    return out;
}

void VerificationSession::guide(const VerificationPhase& phase, int count, Actions& out) {
    const int span = phase.pictures > 0 ? phase.pictures : kHeldSpan;
    const int k = (count - 1) % span + 1;
    const int settled = std::max(2, span / 4);
    const auto add = [this, &out](SignalMessage message) { send(std::move(message), out); };
    switch (phase.guidance) {
    case Guidance::none:
        return;
    case Guidance::document:
        if (k == 1) {
            add(OCRActionSignal{WSCommand::ocrAction, OCRAction::start});
            add(OCRQualityMessage{WSCommand::quality, QStringLiteral("KYC_STATUS_ROI_NOT_FOUND")});
        }
        if (k == settled)
            add(OCRQualityMessage{WSCommand::quality, QStringLiteral("OK")});
        if (k % 4 == 0 || k == span)
            add(OCRProgressSignal{WSCommand::ocrProgress, float(k), float(span)});
        if (k == span)
            add(OCRActionSignal{WSCommand::ocrAction, OCRAction::stop});
        return;
    case Guidance::face:
        if (k == 1)
            add(OCRQualityMessage{WSCommand::quality, QStringLiteral("KYC_STATUS_SELFIE_NO_HEAD")});
        if (k == settled)
            add(OCRQualityMessage{WSCommand::quality, QStringLiteral("OK")});
        return;
    case Guidance::touch:
        if (k == 1)
            add(OverlayRectangle{WSCommand::overlayRectangle, kTargetX, kTargetY, kTargetSize, kTargetSize,
                                 QStringLiteral("#FFFFFF")});
        if (k % 2 == 0 || k == span) {
            const double t = double(k) / span;
            add(TrackingCoordinates{WSCommand::trackingCoordinates,
                                    kFingerFromX + (kFingerToX - kFingerFromX) * t,
                                    kFingerFromY + (kFingerToY - kFingerFromY) * t});
        }
        if (k == span)
            add(RemoveRectangle{});
        return;
    }
}

} // namespace tessara
