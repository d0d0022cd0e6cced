#pragma once

#include "tessara/documents/CreditInstalmentDetailsJSON.h"
#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/FieldJSON.h"
#include "tessara/documents/SubmissionSettings.h"

#include <QString>
#include <optional>
#include <vector>

namespace tessara {

/// The step document. Only "fields" is required (it may be an empty list). Copied by value whenever
/// it is handed on, so every screen owns its own copy.
struct SubmissionJSON {
    /// The step kind; chooses the screen: "KYC_ID" the identity check, "CREDIT_CALCULATOR" the
    /// calculator, any other text a form. A document without it ends the program when it is shown.
    std::optional<QString> type;
    std::optional<QString> name;                ///< The step's title.
    std::optional<QString> submissionId;        ///< The running submission; sent back with every request.
    std::optional<QString> directionId;         ///< This step's id.
    std::optional<QString> processId;           ///< The process the step belongs to.
    std::vector<FieldJSON> fields;              ///< The form, in document order.
    std::optional<SubmissionSettings> settings; ///< Settings of the credit and identity steps.
    /// Filled while a "CREDIT_CALCULATOR" step is prepared.
    std::optional<std::vector<CreditProductJSON>> creditProducts;
    /// The plan the calculator starts from.
    std::optional<CreditInstalmentDetailsJSON> instalmentDetails;

    /// Field-by-field equality.
    friend bool operator==(const SubmissionJSON&, const SubmissionJSON&) = default;
};

} // namespace tessara
