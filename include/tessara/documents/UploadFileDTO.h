#pragma once

#include <QString>

namespace tessara {

/// The "dto" part of a file upload; all three keys always written and required.
struct UploadFileDTO {
    QString submissionId;    ///< SubmissionJSON::submissionId of the step on screen.
    QString key;             ///< The upload field's key.
    QString fromDirectionId; ///< The step the file was chosen on.

    /// Field-by-field equality.
    friend bool operator==(const UploadFileDTO&, const UploadFileDTO&) = default;
};

} // namespace tessara
