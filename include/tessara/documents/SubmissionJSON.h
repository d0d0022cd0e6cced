#pragma once

#include "tessara/documents/CreditInstalmentDetailsJSON.h"
#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/FieldJSON.h"
#include "tessara/documents/SubmissionSettings.h"

#include <QString>
#include <optional>
#include <vector>

namespace tessara {

// The step document. Only "fields" is required (it may be an empty list). Copied by value whenever
// it is handed on, so every screen owns its own copy.
struct SubmissionJSON {
    std::optional<QString> type;
    std::optional<QString> name;
    std::optional<QString> submissionId;
    std::optional<QString> directionId;
    std::optional<QString> processId;
    std::vector<FieldJSON> fields;
    std::optional<SubmissionSettings> settings;
    std::optional<std::vector<CreditProductJSON>> creditProducts;
    std::optional<CreditInstalmentDetailsJSON> instalmentDetails;

    friend bool operator==(const SubmissionJSON&, const SubmissionJSON&) = default;
};

} // namespace tessara
