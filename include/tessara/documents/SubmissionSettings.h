#pragma once

#include "tessara/documents/SubmissionSettingsItem.h"

#include <QString>
#include <QUrl>
#include <optional>
#include <vector>

namespace tessara {

/// Per-step settings; every key is optional and named like its field. A "signallingUrl" or
/// "streamUrl" that is present but not a valid absolute URL fails the whole document.
struct SubmissionSettings {
    std::optional<QString> calculatorSubmitDirectionStepId; ///< The step the calculator submits to.
    std::optional<QString> endUserCreditProductSelection;   ///< How the user chooses among products.
    std::optional<QString> failedNoVideoStream;             ///< The step after the video stream failed.
    std::optional<QString> idBackFailDirectionStepId;       ///< The step after a failed card back side.
    std::optional<QString> idFaceFailDirectionStepId;       ///< The step after a failed card face side.
    std::optional<QString> livenessFailDirectionStepId;     ///< The step after a failed liveness check.
    std::optional<QString> noCameraAccessDirectionStepId;   ///< The step when camera access is refused.
    std::optional<QString> noCameraDirectionId;             ///< The step when there is no camera.
    std::optional<QString> noFaceDirectionStepId;           ///< The step when no face is found.
    std::optional<QString> noServiceDirectionStepId;        ///< The step when the service is unavailable.
    std::optional<std::vector<SubmissionSettingsItem>> products; ///< The credit products of this step.
    std::optional<QUrl> signallingUrl; ///< The verification service's signalling endpoint.
    std::optional<QUrl> streamUrl;     ///< The verification stream's endpoint.
    std::optional<QString> userHash;   ///< The user's identity in the verification session.

    /// Field-by-field equality.
    friend bool operator==(const SubmissionSettings&, const SubmissionSettings&) = default;
};

} // namespace tessara
