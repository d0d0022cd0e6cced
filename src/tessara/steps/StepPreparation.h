#pragma once

#include "tessara/backend/TSRResult.h"
#include "tessara/documents/SubmissionJSON.h"

#include <functional>

namespace tessara {

class TSRNetwork;

// Completes a step call's result before a screen is made for it, then hands it to
// `continuation` on the main thread, always queued (never inside this call):
// - an error passes through unchanged;
// - a document with no type, or of type "DOC_DATA" or "SELFIE", passes through unchanged;
// - a "CREDIT_CALCULATOR" document gets the backend's credit products in `creditProducts`,
//   kept by `settings.products` (see CreditRules::keptProducts); a failed fetch, or products
//   without a single period entry, fail the step ("Products are not properly set, please
//   contact the admin");
// - any other document has its top-level SECTION fields loaded, all at once, each answer
//   prepared the same way (so sections nest); a field's `fields` becomes its section's
//   fields. One failed load fails the step; of several, the last to finish decides the error.
// A document with a SECTION but no submissionId, a SECTION field with no key, or an empty
// section answer ends the program.
void prepareStep(TSRResult<SubmissionJSON> result, TSRNetwork& network,
                 std::function<void(TSRResult<SubmissionJSON>)> continuation);

} // namespace tessara
