#pragma once

#include <Qt>

namespace tessara {

// What a screen answers when it has no opinion of its own about rotation: it may rotate,
// to any orientation, and prefers upright portrait.
inline constexpr bool kDefaultShouldAutorotate = true;
inline constexpr Qt::ScreenOrientations kAllInterfaceOrientations =
    Qt::PortraitOrientation | Qt::LandscapeOrientation | Qt::InvertedPortraitOrientation |
    Qt::InvertedLandscapeOrientation;
inline constexpr Qt::ScreenOrientation kDefaultPreferredOrientation = Qt::PortraitOrientation;

// Landscape with the home side on the left: the device is turned clockwise, so the
// interface is the inverted landscape of a portrait-native screen.
inline constexpr Qt::ScreenOrientation kLandscapeLeftOrientation = Qt::InvertedLandscapeOrientation;
inline constexpr Qt::ScreenOrientations kBothLandscapeOrientations =
    Qt::LandscapeOrientation | Qt::InvertedLandscapeOrientation;

} // namespace tessara
