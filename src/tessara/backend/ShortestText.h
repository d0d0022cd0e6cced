#pragma once

#include <QString>

namespace tessara {

// The shortest decimal text that reads back as the same binary value, in the form the
// wire values use: plain digits with at least one decimal ("1.0", "0.9",
// "1718003200.123456"), and exponent form only for magnitudes below 1e-4 or at and above
// 2^24 (float) / 2^53 (double), where plain digits would run long.
class ShortestText {
public:
    static QString of(float value);
    static QString of(double value);
};

} // namespace tessara
