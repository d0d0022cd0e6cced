#pragma once

#include <QString>
#include <QStringView>
#include <QtGlobal>
#include <compare>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tessara {

/// An exact base-ten number: a signed coefficient of at most 38 decimal digits times a power of ten.
/// Amounts are read from the JSON number's own text, so they never pass through a binary double.
/// Values are kept normalised (no trailing zeros in the coefficient), which makes 1.50 == 1.5.
/// Text with more than 38 significant digits is rejected instead of silently rounded.
class Decimal {
public:
    static constexpr int kMaxDigits = 38; ///< Significant digits a value can hold.
    /// Bound on the power of ten, so that description() stays a bounded text.
    static constexpr int kMaxExponent = 4096;

    /// Zero.
    constexpr Decimal() = default;

    /// Parses the JSON number grammar ("-12.50", "1e3", "0.001"); std::nullopt for anything else,
    /// for more than 38 significant digits, or for a magnitude beyond 10^kMaxExponent.
    ///@{
    static std::optional<Decimal> fromString(std::string_view text);
    static std::optional<Decimal> fromString(QStringView text);
    ///@}
    /// The integer, exactly.
    static Decimal fromInteger(qint64 value);
    /// The shortest decimal text that reads back as the same double. A non-finite value is fatal.
    static Decimal fromDouble(double value);

    /// Nearest binary value, rounded correctly from the exact decimal.
    ///@{
    double toDouble() const;
    float toFloat() const;
    ///@}
    /// The value when it is a whole number that fits in 64 bits.
    ///@{
    std::optional<qint64> toInt64() const;
    std::optional<quint64> toUInt64() const;
    ///@}

    /// Plain text: digits, "." as separator, no grouping, no exponent, no trailing fractional zeros.
    QString description() const;
    /// The same text as UTF-8/ASCII bytes; this is what goes into JSON.
    std::string toStdString() const;

    bool isZero() const { return coefficient_ == 0; }    ///< True for zero.
    bool isNegative() const { return coefficient_ < 0; } ///< True below zero.
    bool isInteger() const { return exponent_ >= 0; }    ///< True for a whole number.
    /// Number of digits after the separator in description().
    int scale() const { return exponent_ < 0 ? -exponent_ : 0; }

    /// Exact when the result has at most 38 significant digits; otherwise rounded half away from
    /// zero to 38 digits (only reachable far beyond money amounts). A result beyond kMaxExponent is
    /// fatal; one below -kMaxExponent becomes zero.
    ///@{
    Decimal operator+(const Decimal& other) const;
    Decimal operator-(const Decimal& other) const;
    Decimal operator*(const Decimal& other) const;
    Decimal operator-() const;
    Decimal& operator+=(const Decimal& other) { return *this = *this + other; }
    Decimal& operator-=(const Decimal& other) { return *this = *this - other; }
    Decimal& operator*=(const Decimal& other) { return *this = *this * other; }
    ///@}
    /// Quotient to 38 significant digits, rounded half away from zero; std::nullopt for a zero divisor.
    std::optional<Decimal> divided(const Decimal& divisor) const;
    /// Rounded to `scale` fractional digits (negative: to tens, hundreds...), halves away from zero.
    Decimal rounded(int scale) const;
    Decimal abs() const { return isNegative() ? -*this : *this; } ///< The magnitude.

    /// Numeric equality and order.
    ///@{
    friend bool operator==(const Decimal& a, const Decimal& b) = default;
    friend std::strong_ordering operator<=>(const Decimal& a, const Decimal& b);
    ///@}

    /// Equal values hash alike, so 1.50 and 1.5 share a QHash slot.
    size_t hash(size_t seed = 0) const;

private:
    using Int128 = __int128;
    Decimal(Int128 coefficient, int exponent);
    static Decimal make(bool negative, std::string_view digits, long long exponent);

    Int128 coefficient_ = 0;
    int exponent_ = 0;

    friend class DecimalArithmetic;
};

/// Decimal::hash, for QHash and QSet.
inline size_t qHash(const Decimal& value, size_t seed = 0) {
    return value.hash(seed);
}

} // namespace tessara
