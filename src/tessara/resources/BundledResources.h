#pragma once

namespace tessara {

// Registers the SDK's own resources (":/tessara/..."). The library is static, so the
// linker keeps the compiled resources only when something calls this; every reader of
// ":/tessara/" calls it first. Cheap after the first call; any thread.
void ensureBundledResources();

} // namespace tessara
