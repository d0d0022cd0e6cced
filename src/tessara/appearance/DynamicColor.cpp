#include "tessara/appearance/DynamicColor.h"

#include "tessara/appearance/TSRAppearance.h"

namespace tessara {

QColor DynamicColor::resolved() const {
    return resolved(TSRAppearance::isDarkStyle());
}

} // namespace tessara
