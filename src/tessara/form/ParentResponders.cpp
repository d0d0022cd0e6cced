#include "tessara/form/ParentResponders.h"

namespace tessara {

std::vector<QObject*> parentResponders(QObject* start) {
    std::vector<QObject*> chain;
    for (QObject* o = start; o; o = o->parent())
        chain.push_back(o);
    return chain;
}

} // namespace tessara
