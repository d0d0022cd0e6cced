#pragma once

#include "host/ScreenStrategy.h"

#include <QString>

namespace tessara::demo {

// Drives an identity verification step, where the remote service leads and the user only holds
// the camera: it waits while the service steers the screen, keeps a picture of each phase the
// first time it has shown for a moment (the document, its reading progress, the face, the touch
// target), and once the verdict's continue button appears either lets the screen leave on its
// own or, when the button waits for the user, presses it.
class VerificationScreenStrategy : public ScreenStrategy {
public:
    // How long the service may take from the screen's appearance to its verdict.
    static constexpr int kVerdictWaitMs = 60000;
    // A verdict that leaves by itself does so 0.1 s after the button shows; this long with the
    // button still enabled means it waits for a press.
    static constexpr int kSelfLeaveWaitMs = 1000;

    bool handles(const QString& type) const override { return type == QLatin1String("KYC_ID"); }
    StepPlan prepare(const StepScreen& screen, const StepContext& context) override;
};

} // namespace tessara::demo
