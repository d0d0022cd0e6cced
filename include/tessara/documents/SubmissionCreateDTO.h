#pragma once

#include <QString>
#include <optional>

namespace tessara {

// Body of POST "/submission". The token is left out of the bytes when absent.
struct SubmissionCreateDTO {
    QString processId;
    std::optional<QString> callingServiceToken;

    friend bool operator==(const SubmissionCreateDTO&, const SubmissionCreateDTO&) = default;
};

} // namespace tessara
