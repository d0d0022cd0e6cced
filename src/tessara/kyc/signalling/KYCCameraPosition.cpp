#include "tessara/kyc/signalling/KYCCameraPosition.h"

namespace tessara {

std::string_view rawValueUtf8(KYCCameraPosition position) {
    return position == KYCCameraPosition::back ? "back" : "front";
}

std::optional<KYCCameraPosition> kycCameraPositionFromRaw(std::string_view raw) {
    if (raw == "back")
        return KYCCameraPosition::back;
    if (raw == "front")
        return KYCCameraPosition::front;
    return std::nullopt;
}

int capturePositionValue(KYCCameraPosition position) {
    return position == KYCCameraPosition::back ? 1 : 2;
}

std::optional<KYCCameraPosition> kycCameraPositionFromCaptureValue(int value) {
    if (value == 1)
        return KYCCameraPosition::back;
    if (value == 2)
        return KYCCameraPosition::front;
    return std::nullopt;
}

} // namespace tessara
