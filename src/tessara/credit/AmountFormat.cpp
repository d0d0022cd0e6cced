#include "tessara/credit/AmountFormat.h"

#include "tessara/credit/CreditRules.h"
#include "tessara/documents/SpecialType.h"
#include "tessara/platform/FatalError.h"

namespace tessara {

namespace {

// The digit a currency pattern is probed with; it stands for the number in the result.
constexpr qlonglong kProbe = 7;
const QChar kSymbolMark(0xFFFC);

Decimal powerOfTen(int exponent) {
    return *Decimal::fromString(QStringLiteral("1e%1").arg(exponent));
}

// Rounded to `digits` fraction digits, a tie going to the even neighbour.
Decimal roundedHalfEven(const Decimal& value, int digits) {
    Decimal rounded = value.rounded(digits);
    const Decimal half = powerOfTen(-digits) * *Decimal::fromString("0.5");
    if ((value - rounded).abs() != half)
        return rounded;
    const QString text = rounded.description();
    const int lastDigit = text.back().digitValue();
    // The scale of description() may be shorter than `digits`: then the last digit shown is
    // followed by zeros and the value is already even at that place.
    if (rounded.scale() == digits && lastDigit % 2 == 1)
        rounded += (value < rounded) ? -powerOfTen(-digits) : powerOfTen(-digits);
    return rounded;
}

// Plain digits of |value| with exactly `digits` fraction digits, grouped as `locale` groups.
QString numberText(const Decimal& value, int digits, const QLocale& locale) {
    const QString plain = value.abs().description();
    const qsizetype dot = plain.indexOf(u'.');
    const QString whole = dot < 0 ? plain : plain.left(dot);
    QString fraction = dot < 0 ? QString() : plain.mid(dot + 1);
    fraction = fraction.leftJustified(digits, u'0', true);

    bool fits = false;
    const qulonglong integer = whole.toULongLong(&fits);
    QLocale grouping = locale;
    grouping.setNumberOptions(locale.numberOptions() & ~QLocale::OmitGroupSeparator);
    QString text = fits ? grouping.toString(integer) : whole;
    if (digits > 0)
        text += locale.decimalPoint() + fraction;
    return text;
}

} // namespace

AmountFormat::AmountFormat(int fractionDigits, QString currencySymbol)
    : fractionDigits_(fractionDigits)
    , currencySymbol_(std::move(currencySymbol)) {}

std::optional<AmountFormat> AmountFormat::configure(const std::vector<FieldJSON>& fields) {
    const QString sumFormat = rawValue(SpecialType::sumFormat);
    const auto field = std::find_if(fields.begin(), fields.end(),
                                    [&](const FieldJSON& f) { return f.specialType == sumFormat; });
    if (field == fields.end() || !field->label)
        return std::nullopt;
    const QStringList opened = field->label->split(u'{', Qt::SkipEmptyParts);
    if (opened.isEmpty())
        fatalError(QStringLiteral("The SUM_FORMAT label is empty."));
    const QStringList pieces = opened.first().split(u'}', Qt::SkipEmptyParts);
    const std::optional<qint64> digits =
        pieces.isEmpty() ? std::nullopt : CreditRules::readInteger(pieces.first());
    if (!digits || *digits > 1000 || *digits < -1000)
        return std::nullopt;
    if (pieces.size() < 2)
        fatalError(QStringLiteral("The SUM_FORMAT label \"%1\" has no currency after its digits.")
                       .arg(*field->label));
    return AmountFormat(int(*digits), pieces.at(1));
}

QString AmountFormat::format(const Decimal& value, const QLocale& locale) const {
    // A negative count of digits cannot be shown; such a label shows whole units.
    const int digits = std::max(0, fractionDigits_);
    const Decimal rounded = roundedHalfEven(value, digits);
    // Where the locale puts the symbol and the sign, learnt from a probe amount.
    const QString pattern =
        locale.toCurrencyString(rounded.isNegative() ? -kProbe : kProbe, QString(kSymbolMark));
    QString text = pattern;
    // A symbol that brings its own space replaces the locale's space beside it, so the two
    // never show as a double gap.
    const qsizetype mark = text.indexOf(kSymbolMark);
    if (!currencySymbol_.isEmpty() && currencySymbol_.back().isSpace() && mark + 1 < text.size() &&
        text.at(mark + 1).isSpace())
        text.remove(mark + 1, 1);
    if (!currencySymbol_.isEmpty() && currencySymbol_.front().isSpace() && mark > 0 &&
        text.at(mark - 1).isSpace())
        text.remove(mark - 1, 1);
    text.replace(text.indexOf(QChar(char16_t(u'0' + kProbe))), 1, numberText(rounded, digits, locale));
    text.replace(kSymbolMark, currencySymbol_);
    return text;
}

QString AmountFormat::formatAmount(const std::optional<AmountFormat>& format, const Decimal& value,
                                   const QLocale& locale) {
    if (format)
        return format->format(value, locale);
    const bool lev = locale.currencySymbol(QLocale::CurrencyIsoCode) == QLatin1String("BGN");
    const QString symbol = lev ? locale.currencySymbol(QLocale::CurrencySymbol) : QStringLiteral("BGN");
    return AmountFormat(2, symbol).format(value, locale);
}

} // namespace tessara
