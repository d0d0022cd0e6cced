#include "tessara/documents/CreditInstalmentDatesJSON.h"

#include "tessara/documents/Parser.h"
#include "tessara/documents/RecordCoding.h"
#include "tessara/platform/FatalError.h"

#include <algorithm>
#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, CreditInstalmentDatesJSON& out) {
    static constexpr std::array kKeys = {"productId"sv, "defaultFirstInstallmentDate"sv, "availableDates"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.productId = JsonReader::readString(m[0]);
    // An unreadable default date is simply no default date.
    const auto defaultText = JsonReader::readOptional(m[1], readString);
    out.defaultFirstInstallmentDate = defaultText ? Parser::parseDay(*defaultText) : std::nullopt;
    out.availableDates = JsonReader::readArray<QDate>(m[2], [](JsonValue element) {
        const QString text = JsonReader::readString(element);
        const auto day = Parser::parseDay(text);
        if (!day)
            fatalError(QStringLiteral("Unable to parse available instalment date \"%1\".").arg(text));
        return *day;
    });
    // The backend's order does not matter: screens rely on ascending dates.
    std::sort(out.availableDates.begin(), out.availableDates.end());
}

void writeJson(JsonWriter& w, const CreditInstalmentDatesJSON& dates) {
    const auto writeDay = [](JsonWriter& writer, const QDate& day) {
        if (!day.isValid())
            writer.invalidate();
        writer.writeString(Parser::formatDay(day));
    };
    w.beginObject();
    w.member("availableDates", dates.availableDates,
             [&](JsonWriter& writer, const std::vector<QDate>& days) { writer.writeArray(days, writeDay); });
    w.optionalMember("defaultFirstInstallmentDate", dates.defaultFirstInstallmentDate, writeDay);
    w.member("productId", dates.productId, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(CreditInstalmentDatesJSON)

} // namespace tessara
