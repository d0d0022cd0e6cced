#include "tessara/form/CurrentAppearance.h"

#include "tessara/api/Tessara.h"

namespace tessara {

TSRAppearance& currentAppearance() {
    return Tessara::appearance();
}

} // namespace tessara
