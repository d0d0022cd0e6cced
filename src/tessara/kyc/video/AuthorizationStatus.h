#pragma once

namespace tessara {

// The user's answer about camera use, with the platform's values.
enum class AuthorizationStatus : int { notDetermined = 0, restricted = 1, denied = 2, authorized = 3 };

} // namespace tessara
