#pragma once

#include "tessara/documents/SubmissionJSON.h"

namespace tessara {

/// A step document wrapped under the required key "direction"; read from local resources.
struct SubmissionContainer {
    SubmissionJSON submission; ///< The wrapped document.

    /// Field-by-field equality.
    friend bool operator==(const SubmissionContainer&, const SubmissionContainer&) = default;
};

} // namespace tessara
