#pragma once

#include "tessara/documents/FieldValueDTO.h"

#include <QString>
#include <optional>
#include <vector>

namespace tessara {

/// Body of POST "/step". Absent optionals are left out of the bytes; "fields" is always written.
struct SubmitStepDTO {
    QString submissionId;                   ///< SubmissionJSON::submissionId of the step on screen.
    QString directionId;                    ///< The step asked for.
    std::optional<QString> fromDirectionId; ///< The step being left.
    std::optional<QString> fromFlowFieldId; ///< The key of the flow button pressed.
    std::vector<FieldValueDTO> fields;      ///< The form's values in document order.

    /// Field-by-field equality.
    friend bool operator==(const SubmitStepDTO&, const SubmitStepDTO&) = default;
};

} // namespace tessara
