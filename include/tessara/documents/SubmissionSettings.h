#pragma once

#include "tessara/documents/SubmissionSettingsItem.h"

#include <QString>
#include <QUrl>
#include <optional>
#include <vector>

namespace tessara {

// Per-step settings; every key is optional and named like its field. A "signallingUrl" or
// "streamUrl" that is present but not a valid absolute URL fails the whole document.
struct SubmissionSettings {
    std::optional<QString> calculatorSubmitDirectionStepId;
    std::optional<QString> endUserCreditProductSelection;
    std::optional<QString> failedNoVideoStream;
    std::optional<QString> idBackFailDirectionStepId;
    std::optional<QString> idFaceFailDirectionStepId;
    std::optional<QString> livenessFailDirectionStepId;
    std::optional<QString> noCameraAccessDirectionStepId;
    std::optional<QString> noCameraDirectionId;
    std::optional<QString> noFaceDirectionStepId;
    std::optional<QString> noServiceDirectionStepId;
    std::optional<std::vector<SubmissionSettingsItem>> products;
    std::optional<QUrl> signallingUrl;
    std::optional<QUrl> streamUrl;
    std::optional<QString> userHash;

    friend bool operator==(const SubmissionSettings&, const SubmissionSettings&) = default;
};

} // namespace tessara
