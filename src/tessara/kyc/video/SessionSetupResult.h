#pragma once

namespace tessara {

// How configuring a capture session ended.
enum class SessionSetupResult { success, notAuthorized, configurationFailed };

} // namespace tessara
