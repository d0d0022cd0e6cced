#pragma once

#include "tessara/documents/FieldValueDTO.h"

#include <QString>
#include <optional>
#include <vector>

namespace tessara {

// Body of POST "/step". Absent optionals are left out of the bytes; "fields" is always written.
struct SubmitStepDTO {
    QString submissionId;
    QString directionId;
    std::optional<QString> fromDirectionId;
    std::optional<QString> fromFlowFieldId;
    std::vector<FieldValueDTO> fields;

    friend bool operator==(const SubmitStepDTO&, const SubmitStepDTO&) = default;
};

} // namespace tessara
