#pragma once

#include "tessara/api/TSRNavigationViewController.h"

namespace tessara {

// A navigation screen held in landscape whatever its screens ask: it does not rotate,
// supports both landscape orientations and opens in landscape with the home side on the
// left. The start and open calls never make one; a host or screen may.
class TSRLandscapeNavigationViewController : public TSRNavigationViewController {
    Q_OBJECT
public:
    using TSRNavigationViewController::TSRNavigationViewController;

    bool shouldAutorotate() const override { return false; }
    Qt::ScreenOrientations supportedInterfaceOrientations() const override {
        return kBothLandscapeOrientations;
    }
    Qt::ScreenOrientation preferredInterfaceOrientationForPresentation() const override {
        return kLandscapeLeftOrientation;
    }
};

} // namespace tessara
