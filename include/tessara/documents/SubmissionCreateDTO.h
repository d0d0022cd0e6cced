#pragma once

#include <QString>
#include <optional>

namespace tessara {

/// Body of POST "/submission". The token is left out of the bytes when absent.
struct SubmissionCreateDTO {
    QString processId; ///< The process to start.
    /// The host's token, sent as it is; never logged.
    std::optional<QString> callingServiceToken;

    /// Field-by-field equality.
    friend bool operator==(const SubmissionCreateDTO&, const SubmissionCreateDTO&) = default;
};

} // namespace tessara
