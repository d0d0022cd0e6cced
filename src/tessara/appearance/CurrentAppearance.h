#pragma once

#include "tessara/appearance/TSRAppearance.h"

#include <memory>

namespace tessara {

// The process-wide theme, the one object every screen reads when it styles a view. Made
// with all defaults on first access (once, thread-safely); each Tessara constructor
// replaces it with the host's. Reads and changes belong on the main thread.
TSRAppearance& currentAppearance();
// The same object, for a host that wants to keep it and change it later.
std::shared_ptr<TSRAppearance> sharedAppearance();
// Installs `appearance` as the process-wide theme; a null pointer installs a fresh one with
// all defaults. Views styled earlier keep their look.
void setCurrentAppearance(std::shared_ptr<TSRAppearance> appearance);

} // namespace tessara
