#include "tessara/documents/CreditInstalmentDetailsJSON.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

// "installmentAmount" and "acruals" are the backend's spellings and must stay as they are.
void readJson(JsonValue value, CreditInstalmentDetailsJSON& out) {
    static constexpr std::array kKeys = {"selectedCreditAmount"sv, "selectedPeriod"sv, "installmentAmount"sv,
                                         "totalDueAmount"sv, "acruals"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.selectedCreditAmount = JsonReader::readDecimal(m[0]);
    out.selectedPeriod = JsonReader::readInt64(m[1]);
    out.instalmentAmount = JsonReader::readDecimal(m[2]);
    out.totalDueAmount = JsonReader::readDecimal(m[3]);
    out.accruals = readArrayOf<AccrualJSON>(m[4]);
}

void writeJson(JsonWriter& w, const CreditInstalmentDetailsJSON& details) {
    w.beginObject();
    w.member("acruals", details.accruals, writeArrayOfRecords);
    w.member("installmentAmount", details.instalmentAmount, writeDecimal);
    w.member("selectedCreditAmount", details.selectedCreditAmount, writeDecimal);
    w.member("selectedPeriod", details.selectedPeriod, writeInt64);
    w.member("totalDueAmount", details.totalDueAmount, writeDecimal);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(CreditInstalmentDetailsJSON)

} // namespace tessara
