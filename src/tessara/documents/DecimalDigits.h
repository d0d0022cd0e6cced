#pragma once

#include <string>

namespace tessara {

// Schoolbook arithmetic on magnitudes written as decimal digit strings (most significant first, no
// leading zeros except "0"). Decimal uses it for the rare results that do not fit 38 digits and for
// division, where speed does not matter and plain code is easier to trust.
class DecimalDigits {
public:
    DecimalDigits() = delete;

    static std::string stripLeadingZeros(std::string digits);
    static int compareDigits(const std::string& a, const std::string& b);
    static std::string addDigits(const std::string& a, const std::string& b);
    // a - b for a >= b.
    static std::string subtractDigits(const std::string& a, const std::string& b);
    static std::string multiplyDigits(const std::string& a, const std::string& b);
    // Integer quotient; the divisor must not be zero.
    static std::string divideDigits(const std::string& dividend, const std::string& divisor);
};

} // namespace tessara
