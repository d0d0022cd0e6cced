#pragma once

namespace tessara {

// Which way a camera faces, with the platform's values (the signalling speaks them too).
enum class CapturePosition : int { unspecified = 0, back = 1, front = 2 };

} // namespace tessara
