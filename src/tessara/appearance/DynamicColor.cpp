#include "tessara/appearance/DynamicColor.h"

#include "tessara/appearance/TSRAppearance.h"

namespace tessara {

QColor DynamicColor::resolved() const {
    return TSRAppearance::isDarkStyle() ? dark_ : light_;
}

} // namespace tessara
