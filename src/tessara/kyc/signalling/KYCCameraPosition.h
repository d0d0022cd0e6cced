#pragma once

#include <optional>
#include <string_view>

namespace tessara {

// The camera the service asks for; the raw strings are the wire values.
enum class KYCCameraPosition {
    back,
    front,
};

std::string_view rawValueUtf8(KYCCameraPosition position);
std::optional<KYCCameraPosition> kycCameraPositionFromRaw(std::string_view raw);

// The capture position value the camera code works with: back 1, front 2.
int capturePositionValue(KYCCameraPosition position);
// The position of a capture position value; std::nullopt for any other value.
std::optional<KYCCameraPosition> kycCameraPositionFromCaptureValue(int value);

} // namespace tessara
