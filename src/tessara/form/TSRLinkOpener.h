#pragma once

#include <QUrl>

namespace tessara {

// A narrow request a control makes of its screen. A control never holds its screen: it
// walks its parent chain (parentResponders) and uses the first object that implements
// the interface; with none, the action does nothing.
class TSRLinkOpener {
public:
    virtual ~TSRLinkOpener() = default;
    virtual void openLink(const QUrl& url) = 0;
};

} // namespace tessara
