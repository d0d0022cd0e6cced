#include "DocumentKind.h"

#include "tessara/documents/CreditInstalmentDatesJSON.h"
#include "tessara/documents/CreditInstalmentDetailsJSON.h"
#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/KYCStatusJSON.h"
#include "tessara/documents/Parser.h"
#include "tessara/documents/SubmissionJSON.h"

#include <nlohmann/json.hpp>
#include <vector>

namespace tessara::tool {

namespace {

template <typename T> std::optional<QByteArray> roundTrip(QByteArrayView bytes) {
    const auto record = decodeDocument<T>(bytes);
    if (!record)
        return std::nullopt;
    return encodeDocument<T>(*record);
}

} // namespace

QStringList DocumentKind::names() {
    return {QStringLiteral("step"),  QStringLiteral("section-list"), QStringLiteral("products"),
            QStringLiteral("dates"), QStringLiteral("details"),      QStringLiteral("kyc-status")};
}

bool DocumentKind::exists(const QString& kind) {
    return names().contains(kind);
}

std::optional<QByteArray> DocumentKind::reencode(const QString& kind, QByteArrayView bytes) {
    if (kind == QLatin1String("step"))
        return roundTrip<SubmissionJSON>(bytes);
    if (kind == QLatin1String("section-list"))
        return roundTrip<std::vector<SubmissionJSON>>(bytes);
    if (kind == QLatin1String("products"))
        return roundTrip<std::vector<CreditProductJSON>>(bytes);
    if (kind == QLatin1String("dates"))
        return stopsTheClient(kind, bytes) ? std::nullopt : roundTrip<CreditInstalmentDatesJSON>(bytes);
    if (kind == QLatin1String("details"))
        return roundTrip<CreditInstalmentDetailsJSON>(bytes);
    if (kind == QLatin1String("kyc-status"))
        return roundTrip<KYCStatusJSON>(bytes);
    return std::nullopt;
}

bool DocumentKind::stopsTheClient(const QString& kind, QByteArrayView bytes) {
    if (kind != QLatin1String("dates"))
        return false;
    const auto json = nlohmann::json::parse(bytes.begin(), bytes.end(), nullptr, /*allow_exceptions=*/false);
    if (!json.is_object() || !json.contains("availableDates") || !json["availableDates"].is_array())
        return false;
    for (const auto& element : json["availableDates"]) {
        if (element.is_string() && !Parser::parseDay(QString::fromStdString(element.get<std::string>())))
            return true;
    }
    return false;
}

} // namespace tessara::tool
