#include "tessara/credit/CreditRules.h"

#include "tessara/platform/FatalError.h"

#include <algorithm>
#include <cmath>

namespace tessara {

QString CreditRules::productsNotSetText() {
    return QStringLiteral("Products are not properly set, please contact the admin");
}

QString CreditRules::noProductForPeriodText() {
    return QStringLiteral("No product for this period");
}

std::optional<qint64> CreditRules::readInteger(const QString& text) {
    if (text.isEmpty())
        return std::nullopt;
    const qsizetype start = (text.front() == u'+' || text.front() == u'-') ? 1 : 0;
    if (start == text.size())
        return std::nullopt;
    // QString::toLongLong forgives surrounding spaces; an identifier does not.
    for (qsizetype i = start; i < text.size(); ++i) {
        if (text[i] < u'0' || text[i] > u'9')
            return std::nullopt;
    }
    bool ok = false;
    const qint64 value = text.toLongLong(&ok, 10);
    if (!ok)
        return std::nullopt;
    return value;
}

std::vector<CreditProductJSON> CreditRules::keptProducts(std::vector<CreditProductJSON> products,
                                                         const std::optional<SubmissionSettings>& settings) {
    if (!settings || !settings->products)
        return products;
    std::vector<qint64> wanted;
    for (const SubmissionSettingsItem& item : *settings->products) {
        if (!item.itemValue || item.itemValue->isEmpty())
            continue;
        if (const auto id = readInteger(*item.itemValue))
            wanted.push_back(*id);
    }
    std::erase_if(products, [&wanted](const CreditProductJSON& product) {
        return std::find(wanted.begin(), wanted.end(), product.productId) == wanted.end();
    });
    return products;
}

MinMaxPrincipals CreditRules::computeMinMaxPrincipals(const std::vector<CreditProductJSON>& products) {
    MinMaxPrincipals bounds;
    for (const CreditProductJSON& product : products) {
        for (const CreditProductPeriodJSON& entry : product.periods) {
            if (!bounds.min || entry.minPrincipal < *bounds.min)
                bounds.min = entry.minPrincipal;
            if (!bounds.max || *bounds.max < entry.maxPrincipal)
                bounds.max = entry.maxPrincipal;
        }
    }
    return bounds;
}

SuitablePeriods CreditRules::computeSuitablePeriods(const std::vector<CreditProductJSON>& products,
                                                    const Decimal& amount) {
    SuitablePeriods index;
    for (const CreditProductJSON& product : products) {
        for (const CreditProductPeriodJSON& entry : product.periods) {
            if (amount < entry.minPrincipal || entry.maxPrincipal < amount)
                continue;
            index[entry.period].push_back(product);
        }
    }
    return index;
}

float CreditRules::snapAmount(float value, float step) {
    // std::round rounds halves away from zero; every operand stays a float, as the slider's.
    const float steps = std::round(value / step);
    return steps * step;
}

qint64 CreditRules::roundPeriod(float value) {
    const double rounded = std::round(double(value));
    // 2^63 is exactly representable; anything at or beyond it does not fit.
    if (!std::isfinite(rounded) || rounded >= 9223372036854775808.0 || rounded < -9223372036854775808.0)
        fatalError(QStringLiteral("The period slider holds %1, which is no whole number of periods.")
                       .arg(double(value)));
    return qint64(rounded);
}

} // namespace tessara
