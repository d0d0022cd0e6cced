#pragma once

#include <QObject>
#include <vector>

namespace tessara {

// The object itself, then its parents, nearest first: the chain a control walks to find
// the screen-side object that serves a request.
std::vector<QObject*> parentResponders(QObject* start);

// The first object of the parent chain that implements `T`, or nullptr.
template <typename T> T* firstResponder(QObject* start) {
    for (QObject* o : parentResponders(start)) {
        if (auto* t = dynamic_cast<T*>(o))
            return t;
    }
    return nullptr;
}

} // namespace tessara
