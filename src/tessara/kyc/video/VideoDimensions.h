#pragma once

#include <QMetaType>
#include <cstdint>

namespace tessara {

// A picture size in pixels, the unit in which formats are chosen and encoders configured.
struct VideoDimensions {
    int32_t width = 0;
    int32_t height = 0;

    friend bool operator==(const VideoDimensions&, const VideoDimensions&) = default;
};

} // namespace tessara

Q_DECLARE_METATYPE(tessara::VideoDimensions)
