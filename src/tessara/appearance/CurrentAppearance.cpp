#include "tessara/appearance/CurrentAppearance.h"

namespace tessara {

namespace {
std::shared_ptr<TSRAppearance>& slot() {
    // A function-local static is initialised once, thread-safely, on first use.
    static std::shared_ptr<TSRAppearance> instance = std::make_shared<TSRAppearance>();
    return instance;
}
} // namespace

TSRAppearance& currentAppearance() {
    return *slot();
}

std::shared_ptr<TSRAppearance> sharedAppearance() {
    return slot();
}

void setCurrentAppearance(std::shared_ptr<TSRAppearance> appearance) {
    slot() = appearance ? std::move(appearance) : std::make_shared<TSRAppearance>();
}

} // namespace tessara
