#pragma once

#include <QString>
#include <optional>

namespace tessara {

/// One entry of SubmissionSettings::products; both keys optional.
struct SubmissionSettingsItem {
    std::optional<QString> itemValue; ///< A credit product id.
    std::optional<QString> name;      ///< A name for people.

    /// Field-by-field equality.
    friend bool operator==(const SubmissionSettingsItem&, const SubmissionSettingsItem&) = default;
};

} // namespace tessara
