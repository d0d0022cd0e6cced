#include "tessara/credit/CalculatorValues.h"

#include "tessara/documents/SpecialType.h"
#include "tessara/platform/FatalError.h"

#include <QDateTime>
#include <QTimeZone>
#include <algorithm>
#include <array>

namespace tessara {

namespace {

[[noreturn]] void missing(SpecialType type, const char* what) {
    fatalError(QStringLiteral("The calculator cannot send %1: %2.").arg(rawValue(type), QLatin1String(what)));
}

const CreditInstalmentDetailsJSON& details(const CalculatorSelection& selection, SpecialType type) {
    if (!selection.instalmentDetails)
        missing(type, "no instalment plan was loaded");
    return *selection.instalmentDetails;
}

QString valueFor(SpecialType type, const CalculatorSelection& selection) {
    switch (type) {
    case SpecialType::amount:
        return selection.amount.description();
    case SpecialType::instalmentAmount:
        return details(selection, type).instalmentAmount.description();
    case SpecialType::instalmentDate:
        if (!selection.date)
            missing(type, "no first instalment date is selected");
        return QString::number(QDateTime(*selection.date, QTime(0, 0)).toMSecsSinceEpoch());
    case SpecialType::periods:
        return QString::number(selection.period);
    case SpecialType::productID:
        if (!selection.product)
            missing(type, "no product is selected");
        return QString::number(selection.product->productId);
    case SpecialType::totalSum:
        return details(selection, type).totalDueAmount.description();
    default:
        break;
    }
    missing(type, "it is not a calculator value");
}

} // namespace

std::vector<FieldValueDTO> CalculatorValues::fieldValues(const std::vector<FieldJSON>& fields,
                                                         const CalculatorSelection& selection) {
    static constexpr std::array kSubmitted{SpecialType::amount,         SpecialType::instalmentAmount,
                                           SpecialType::instalmentDate, SpecialType::periods,
                                           SpecialType::productID,      SpecialType::totalSum};
    std::vector<FieldValueDTO> values;
    for (SpecialType type : kSubmitted) {
        const QString raw = rawValue(type);
        const auto field = std::find_if(fields.begin(), fields.end(),
                                        [&](const FieldJSON& f) { return f.specialType == raw; });
        if (field == fields.end())
            continue;
        if (!field->key)
            missing(type, "its field has no key");
        values.push_back(FieldValueDTO{*field->key, valueFor(type, selection)});
    }
    return values;
}

} // namespace tessara
