#pragma once

#include "tessara/appearance/TSRAppearance.h"

namespace tessara {

// The global theme (Tessara::appearance()), which controls read when they style themselves.
// Kept apart so that controls need not include the host entry's header.
TSRAppearance& currentAppearance();

} // namespace tessara
