#pragma once

#include "tessara/documents/FieldJSON.h"

namespace tessara {

// A narrow request a control makes of its screen. A control never holds its screen: it
// walks its parent chain (parentResponders) and uses the first object that implements
// the interface; with none, the action does nothing.
class TSRPopupOpener {
public:
    virtual ~TSRPopupOpener() = default;
    virtual void openPopup(const FieldJSON& field) = 0;
};

} // namespace tessara
