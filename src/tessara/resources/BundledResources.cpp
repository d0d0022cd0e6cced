#include "tessara/resources/BundledResources.h"

#include <QtGlobal>
#include <mutex>

// Q_INIT_RESOURCE declares the registration function in the enclosing namespace, and the
// generated one is global.
static void registerTessaraResources() {
    Q_INIT_RESOURCE(tessara);
}

namespace tessara {

void ensureBundledResources() {
    static std::once_flag once;
    std::call_once(once, registerTessaraResources);
}

} // namespace tessara
