#pragma once

#include <QLoggingCategory>

namespace tessara {

// The framework's identity: logging categories, notification names and the User-Agent use it.
inline constexpr const char* kFrameworkBundleIdentifier = "com.tessara.TessaraSDK";

} // namespace tessara

// Categories are the bundle identifier plus "." and the category name.
Q_DECLARE_LOGGING_CATEGORY(lcTessara)
Q_DECLARE_LOGGING_CATEGORY(lcWebSocket)
Q_DECLARE_LOGGING_CATEGORY(lcVideoCapture)
Q_DECLARE_LOGGING_CATEGORY(lcSignalling)
