#pragma once

#include <QString>
#include <optional>

namespace tessara {

// One entry of SubmissionSettings::products; both keys optional.
struct SubmissionSettingsItem {
    std::optional<QString> itemValue;
    std::optional<QString> name;

    friend bool operator==(const SubmissionSettingsItem&, const SubmissionSettingsItem&) = default;
};

} // namespace tessara
