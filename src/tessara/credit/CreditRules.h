#pragma once

#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/Decimal.h"
#include "tessara/documents/SubmissionSettings.h"

#include <map>
#include <optional>
#include <vector>

namespace tessara {

// The smallest and largest amount the products lend, over their period entries.
struct MinMaxPrincipals {
    std::optional<Decimal> min;
    std::optional<Decimal> max;

    friend bool operator==(const MinMaxPrincipals&, const MinMaxPrincipals&) = default;
};

// Period -> the products that lend the amount for that many periods, in product order. A
// std::map keeps the periods ascending, which is the order every smallest/largest reads.
using SuitablePeriods = std::map<qint64, std::vector<CreditProductJSON>>;

// The calculator's computing rules that depend on nothing but their arguments.
class CreditRules {
public:
    CreditRules() = delete;

    // The text of the error that a product list without any period entry gives.
    static QString productsNotSetText();
    // The text of the alert for a period that no product offers.
    static QString noProductForPeriodText();

    // The products a step keeps under `settings.products`: all without settings or list;
    // otherwise those whose productId is among the items' values read as base-ten integers
    // (optional sign; empty, unreadable or overflowing values dropped), in the backend's
    // order. A present but empty list keeps none.
    static std::vector<CreditProductJSON> keptProducts(std::vector<CreditProductJSON> products,
                                                       const std::optional<SubmissionSettings>& settings);

    // Smallest entry minPrincipal and largest entry maxPrincipal over every period entry of
    // every product; the products' own bounds do not count. Both absent without entries.
    static MinMaxPrincipals computeMinMaxPrincipals(const std::vector<CreditProductJSON>& products);

    // For each period entry whose bounds include `amount` (both inclusive), the product is
    // appended under the entry's period; a product matching twice stands twice.
    static SuitablePeriods computeSuitablePeriods(const std::vector<CreditProductJSON>& products,
                                                  const Decimal& amount);

    // A slider value snapped to a multiple of `step`: value / step rounded with halves away
    // from zero, times step, all in 32-bit float. A step of 0 is not guarded (NaN results).
    static float snapAmount(float value, float step);

    // A period slider value as a whole number of periods, rounded to nearest. Not finite or
    // beyond 64 bits ends the program.
    static qint64 roundPeriod(float value);

    // Reads a base-ten integer with an optional leading sign and nothing else.
    static std::optional<qint64> readInteger(const QString& text);
};

} // namespace tessara
