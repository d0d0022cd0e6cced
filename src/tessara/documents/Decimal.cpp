#include "tessara/documents/Decimal.h"

#include "tessara/documents/DecimalDigits.h"
#include "tessara/platform/FatalError.h"

#include <QHashFunctions>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace tessara {

namespace {

using Int128 = __int128;
using UInt128 = unsigned __int128;

constexpr std::array<UInt128, 39> makePowersOfTen() {
    std::array<UInt128, 39> powers{};
    UInt128 value = 1;
    for (auto& power : powers) {
        power = value;
        value *= 10;
    }
    return powers;
}
constexpr auto kPow10 = makePowersOfTen();

UInt128 magnitude(Int128 value) {
    return value < 0 ? UInt128(0) - UInt128(value) : UInt128(value);
}

int digitCount(UInt128 value) {
    int count = 1;
    while (count < 39 && value >= kPow10[count])
        ++count;
    return count;
}

// Digits of a magnitude, most significant first; "0" for zero.
std::string digitsOf(UInt128 value) {
    if (value == 0)
        return "0";
    char buffer[48];
    char* end = buffer + sizeof buffer;
    char* cursor = end;
    while (value != 0) {
        // Peel 19 digits at a time so most of the work is 64-bit division.
        constexpr quint64 kChunk = 10000000000000000000ull;
        quint64 chunk = quint64(value % kChunk);
        value /= kChunk;
        for (int i = 0; i < 19 && (chunk != 0 || value != 0); ++i) {
            *--cursor = char('0' + chunk % 10);
            chunk /= 10;
        }
    }
    return std::string(cursor, end);
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

class DecimalArithmetic {
public:
    // Builds a value from a digit string of any length: rounds to 38 significant digits, halves
    // away from zero, then checks the exponent range.
    static Decimal fromDigits(bool negative, std::string digits, long long exponent) {
        digits = DecimalDigits::stripLeadingZeros(std::move(digits));
        if (digits.size() > size_t(Decimal::kMaxDigits)) {
            const size_t dropped = digits.size() - Decimal::kMaxDigits;
            const bool roundUp = digits[Decimal::kMaxDigits] >= '5';
            digits.resize(Decimal::kMaxDigits);
            exponent += (long long)dropped;
            if (roundUp)
                digits = DecimalDigits::addDigits(digits, "1");
        }
        return Decimal::make(negative, digits, exponent);
    }

    static std::string digits(const Decimal& value) { return digitsOf(magnitude(value.coefficient_)); }
    static int exponent(const Decimal& value) { return value.exponent_; }
};

Decimal::Decimal(Int128 coefficient, int exponent)
    : coefficient_(coefficient)
    , exponent_(exponent) {
    if (coefficient_ == 0) {
        exponent_ = 0;
        return;
    }
    while (coefficient_ % 10 == 0) {
        coefficient_ /= 10;
        ++exponent_;
    }
}

// `digits` is a magnitude of any length; more than 38 significant digits are the caller's to round.
Decimal Decimal::make(bool negative, std::string_view digits, long long exponent) {
    const auto first = digits.find_first_not_of('0');
    if (first == std::string_view::npos)
        return Decimal();
    digits.remove_prefix(first);
    while (digits.size() > 1 && digits.back() == '0') {
        digits.remove_suffix(1);
        ++exponent;
    }
    const long long adjusted = exponent + (long long)digits.size() - 1;
    if (adjusted > kMaxExponent)
        fatalError(QStringLiteral("Decimal overflow: the result exceeds 10^%1.").arg(kMaxExponent));
    if (exponent < -kMaxExponent) {
        // Too small to hold: drop digits below the smallest exponent (rounding half away from zero).
        const long long excess = -kMaxExponent - exponent;
        if (excess > (long long)digits.size())
            return Decimal();
        const size_t keptLength = digits.size() - size_t(excess);
        const bool roundUp = digits[keptLength] >= '5';
        std::string kept(keptLength == 0 ? std::string_view("0") : digits.substr(0, keptLength));
        if (roundUp)
            kept = DecimalDigits::addDigits(kept, "1");
        return make(negative, kept, -kMaxExponent);
    }
    UInt128 value = 0;
    for (char c : digits)
        value = value * 10 + UInt128(c - '0');
    const Int128 signedValue = negative ? -Int128(value) : Int128(value);
    return Decimal(signedValue, int(exponent));
}

std::optional<Decimal> Decimal::fromString(std::string_view text) {
    size_t pos = 0;
    const bool negative = pos < text.size() && text[pos] == '-';
    if (negative)
        ++pos;
    const size_t integerStart = pos;
    while (pos < text.size() && isDigit(text[pos]))
        ++pos;
    const std::string_view integerPart = text.substr(integerStart, pos - integerStart);
    if (integerPart.empty() || (integerPart.size() > 1 && integerPart[0] == '0'))
        return std::nullopt;
    std::string_view fractionPart;
    if (pos < text.size() && text[pos] == '.') {
        const size_t fractionStart = ++pos;
        while (pos < text.size() && isDigit(text[pos]))
            ++pos;
        fractionPart = text.substr(fractionStart, pos - fractionStart);
        if (fractionPart.empty())
            return std::nullopt;
    }
    long long exponent = 0;
    if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
        ++pos;
        bool negativeExponent = false;
        if (pos < text.size() && (text[pos] == '+' || text[pos] == '-'))
            negativeExponent = text[pos++] == '-';
        const size_t exponentStart = pos;
        while (pos < text.size() && isDigit(text[pos])) {
            // Saturate: anything this large is out of range whatever the digits say.
            exponent = std::min(exponent * 10 + (text[pos] - '0'), 1'000'000'000'000LL);
            ++pos;
        }
        if (pos == exponentStart)
            return std::nullopt;
        if (negativeExponent)
            exponent = -exponent;
    }
    if (pos != text.size())
        return std::nullopt;

    std::string digits;
    digits.reserve(integerPart.size() + fractionPart.size());
    digits.append(integerPart);
    digits.append(fractionPart);
    exponent -= (long long)fractionPart.size();

    const auto first = digits.find_first_not_of('0');
    if (first == std::string::npos)
        return Decimal();
    const auto last = digits.find_last_not_of('0');
    const size_t significant = last - first + 1;
    if (significant > size_t(kMaxDigits))
        return std::nullopt;
    exponent += (long long)(digits.size() - 1 - last);
    const long long adjusted = exponent + (long long)significant - 1;
    if (adjusted > kMaxExponent || exponent < -kMaxExponent)
        return std::nullopt;
    return make(negative, std::string_view(digits).substr(first, significant), exponent);
}

std::optional<Decimal> Decimal::fromString(QStringView text) {
    std::string latin;
    latin.reserve(size_t(text.size()));
    for (QChar c : text) {
        if (c.unicode() > 0x7f)
            return std::nullopt;
        latin.push_back(char(c.unicode()));
    }
    return fromString(std::string_view(latin));
}

Decimal Decimal::fromInteger(qint64 value) {
    return Decimal(Int128(value), 0);
}

Decimal Decimal::fromDouble(double value) {
    if (!std::isfinite(value))
        fatalError(QStringLiteral("A non-finite number cannot become a Decimal."));
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    // Shortest round-trip text has at most 17 digits and an exponent within ±324: always readable.
    return *fromString(std::string_view(buffer, size_t(result.ptr - buffer)));
}

namespace {
std::string scientificText(bool negative, const std::string& digits, int exponent) {
    std::string text = negative ? "-" : "";
    text += digits;
    text += 'e';
    text += std::to_string(exponent);
    return text;
}
} // namespace

double Decimal::toDouble() const {
    const std::string text = scientificText(isNegative(), digitsOf(magnitude(coefficient_)), exponent_);
    double value = 0;
    // from_chars is locale-independent and correctly rounded; out of range leaves `value` alone.
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return exponent_ > 0 ? (isNegative() ? -HUGE_VAL : HUGE_VAL) : (isNegative() ? -0.0 : 0.0);
    return value;
}

float Decimal::toFloat() const {
    const std::string text = scientificText(isNegative(), digitsOf(magnitude(coefficient_)), exponent_);
    float value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return exponent_ > 0 ? (isNegative() ? -HUGE_VALF : HUGE_VALF) : (isNegative() ? -0.0f : 0.0f);
    return value;
}

std::optional<qint64> Decimal::toInt64() const {
    if (exponent_ < 0)
        return std::nullopt;
    if (exponent_ > 18)
        return std::nullopt; // non-zero values are normalised, so this is at least 10^19
    Int128 value = 0;
    if (__builtin_mul_overflow(coefficient_, Int128(kPow10[size_t(exponent_)]), &value))
        return std::nullopt;
    if (value > Int128(std::numeric_limits<qint64>::max()) ||
        value < Int128(std::numeric_limits<qint64>::min()))
        return std::nullopt;
    return qint64(value);
}

std::optional<quint64> Decimal::toUInt64() const {
    if (exponent_ < 0 || exponent_ > 19 || coefficient_ < 0)
        return std::nullopt;
    UInt128 value = 0;
    if (__builtin_mul_overflow(UInt128(coefficient_), kPow10[size_t(exponent_)], &value))
        return std::nullopt;
    if (value > UInt128(std::numeric_limits<quint64>::max()))
        return std::nullopt;
    return quint64(value);
}

std::string Decimal::toStdString() const {
    if (coefficient_ == 0)
        return "0";
    const std::string digits = digitsOf(magnitude(coefficient_));
    std::string text;
    text.reserve(digits.size() + size_t(std::abs(exponent_)) + 3);
    if (isNegative())
        text += '-';
    if (exponent_ >= 0) {
        text += digits;
        text.append(size_t(exponent_), '0');
    } else if (size_t(-exponent_) < digits.size()) {
        const size_t integerDigits = digits.size() - size_t(-exponent_);
        text.append(digits, 0, integerDigits);
        text += '.';
        text.append(digits, integerDigits);
    } else {
        text += "0.";
        text.append(size_t(-exponent_) - digits.size(), '0');
        text += digits;
    }
    return text;
}

QString Decimal::description() const {
    return QString::fromLatin1(toStdString());
}

Decimal Decimal::operator-() const {
    return Decimal(-coefficient_, exponent_);
}

Decimal Decimal::operator+(const Decimal& other) const {
    if (isZero())
        return other;
    if (other.isZero())
        return *this;
    // Fast path: align on the smaller exponent when that fits, then add.
    const Decimal& high = exponent_ >= other.exponent_ ? *this : other;
    const Decimal& low = exponent_ >= other.exponent_ ? other : *this;
    const int shift = high.exponent_ - low.exponent_;
    Int128 scaled = 0;
    Int128 sum = 0;
    if (shift <= 38 && !__builtin_mul_overflow(high.coefficient_, Int128(kPow10[size_t(shift)]), &scaled) &&
        !__builtin_add_overflow(scaled, low.coefficient_, &sum) && magnitude(sum) < kPow10[kMaxDigits])
        return Decimal(sum, low.exponent_);

    // Slow path on digit strings, for results beyond 38 digits.
    std::string highDigits = DecimalArithmetic::digits(high);
    highDigits.append(size_t(shift), '0');
    const std::string lowDigits = DecimalArithmetic::digits(low);
    if (high.isNegative() == low.isNegative())
        return DecimalArithmetic::fromDigits(high.isNegative(),
                                             DecimalDigits::addDigits(highDigits, lowDigits), low.exponent_);
    if (DecimalDigits::compareDigits(highDigits, lowDigits) >= 0)
        return DecimalArithmetic::fromDigits(
            high.isNegative(), DecimalDigits::subtractDigits(highDigits, lowDigits), low.exponent_);
    return DecimalArithmetic::fromDigits(low.isNegative(),
                                         DecimalDigits::subtractDigits(lowDigits, highDigits), low.exponent_);
}

Decimal Decimal::operator-(const Decimal& other) const {
    return *this + (-other);
}

Decimal Decimal::operator*(const Decimal& other) const {
    if (isZero() || other.isZero())
        return Decimal();
    const long long exponent = (long long)exponent_ + other.exponent_;
    Int128 product = 0;
    if (!__builtin_mul_overflow(coefficient_, other.coefficient_, &product) &&
        magnitude(product) < kPow10[kMaxDigits] && exponent >= -kMaxExponent && exponent <= kMaxExponent) {
        const Decimal result(product, int(exponent));
        if (result.exponent_ + digitCount(magnitude(result.coefficient_)) - 1 <= kMaxExponent)
            return result;
    }
    return DecimalArithmetic::fromDigits(
        isNegative() != other.isNegative(),
        DecimalDigits::multiplyDigits(DecimalArithmetic::digits(*this), DecimalArithmetic::digits(other)),
        exponent);
}

std::optional<Decimal> Decimal::divided(const Decimal& divisor) const {
    if (divisor.isZero())
        return std::nullopt;
    if (isZero())
        return Decimal();
    std::string dividend = DecimalArithmetic::digits(*this);
    const std::string divisorDigits = DecimalArithmetic::digits(divisor);
    // Widen the dividend so the integer quotient has at least 39 digits: one beyond what is kept,
    // which decides the half-away-from-zero rounding.
    const long long extra =
        std::max<long long>(0, kMaxDigits + 1 + (long long)divisorDigits.size() - (long long)dividend.size());
    dividend.append(size_t(extra), '0');
    const long long exponent = (long long)exponent_ - divisor.exponent_ - extra;
    return DecimalArithmetic::fromDigits(isNegative() != divisor.isNegative(),
                                         DecimalDigits::divideDigits(dividend, divisorDigits), exponent);
}

Decimal Decimal::rounded(int scale) const {
    const long long targetExponent = -(long long)scale;
    if (isZero() || exponent_ >= targetExponent)
        return *this;
    const long long drop = targetExponent - exponent_;
    const UInt128 value = magnitude(coefficient_);
    if (drop > 38)
        return Decimal(); // below half of the last kept place
    const UInt128 divisor = kPow10[size_t(drop)];
    UInt128 quotient = value / divisor;
    if (value % divisor >= divisor / 2)
        ++quotient;
    return DecimalArithmetic::fromDigits(isNegative(), digitsOf(quotient), targetExponent);
}

std::strong_ordering operator<=>(const Decimal& a, const Decimal& b) {
    const int signA = a.coefficient_ < 0 ? -1 : (a.coefficient_ > 0 ? 1 : 0);
    const int signB = b.coefficient_ < 0 ? -1 : (b.coefficient_ > 0 ? 1 : 0);
    if (signA != signB || signA == 0)
        return signA <=> signB;
    const UInt128 magA = magnitude(a.coefficient_);
    const UInt128 magB = magnitude(b.coefficient_);
    const int adjustedA = a.exponent_ + digitCount(magA) - 1;
    const int adjustedB = b.exponent_ + digitCount(magB) - 1;
    std::strong_ordering byMagnitude = std::strong_ordering::equal;
    if (adjustedA != adjustedB) {
        byMagnitude = adjustedA <=> adjustedB;
    } else {
        // Same leading place: both fit 38 digits once aligned on the smaller exponent.
        const int low = std::min(a.exponent_, b.exponent_);
        byMagnitude = magA * kPow10[size_t(a.exponent_ - low)] <=> magB * kPow10[size_t(b.exponent_ - low)];
    }
    return signA > 0 ? byMagnitude : 0 <=> byMagnitude;
}

size_t Decimal::hash(size_t seed) const {
    const UInt128 bits = UInt128(coefficient_);
    return qHashMulti(seed, quint64(bits), quint64(bits >> 64), exponent_);
}

} // namespace tessara
