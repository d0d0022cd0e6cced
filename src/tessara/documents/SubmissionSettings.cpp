#include "tessara/documents/SubmissionSettings.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

namespace {

using namespace std::string_view_literals;

constexpr std::array kKeys = {
    "calculatorSubmitDirectionStepId"sv,
    "endUserCreditProductSelection"sv,
    "failedNoVideoStream"sv,
    "idBackFailDirectionStepId"sv,
    "idFaceFailDirectionStepId"sv,
    "livenessFailDirectionStepId"sv,
    "noCameraAccessDirectionStepId"sv,
    "noCameraDirectionId"sv,
    "noFaceDirectionStepId"sv,
    "noServiceDirectionStepId"sv,
    "products"sv,
    "signallingUrl"sv,
    "streamUrl"sv,
    "userHash"sv,
};

// A present URL must be a valid absolute URL; a relative or broken one fails the whole document,
// since the verification screen could do nothing sensible with it.
QUrl readUrl(JsonValue value) {
    const QUrl url(JsonReader::readString(value), QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty())
        JsonReader::fail();
    return url;
}

void writeUrl(JsonWriter& writer, const QUrl& url) {
    if (!url.isValid())
        writer.invalidate();
    writer.writeString(url.toString(QUrl::FullyEncoded));
}

} // namespace

void readJson(JsonValue value, SubmissionSettings& out) {
    const auto m = JsonReader::members(value, kKeys);
    using R = JsonReader;
    out.calculatorSubmitDirectionStepId = R::readOptional(m[0], readString);
    out.endUserCreditProductSelection = R::readOptional(m[1], readString);
    out.failedNoVideoStream = R::readOptional(m[2], readString);
    out.idBackFailDirectionStepId = R::readOptional(m[3], readString);
    out.idFaceFailDirectionStepId = R::readOptional(m[4], readString);
    out.livenessFailDirectionStepId = R::readOptional(m[5], readString);
    out.noCameraAccessDirectionStepId = R::readOptional(m[6], readString);
    out.noCameraDirectionId = R::readOptional(m[7], readString);
    out.noFaceDirectionStepId = R::readOptional(m[8], readString);
    out.noServiceDirectionStepId = R::readOptional(m[9], readString);
    out.products = R::readOptional(m[10], readArrayOf<SubmissionSettingsItem>);
    out.signallingUrl = R::readOptional(m[11], readUrl);
    out.streamUrl = R::readOptional(m[12], readUrl);
    out.userHash = R::readOptional(m[13], readString);
}

void writeJson(JsonWriter& w, const SubmissionSettings& settings) {
    w.beginObject();
    w.optionalMember(kKeys[0], settings.calculatorSubmitDirectionStepId, writeString);
    w.optionalMember(kKeys[1], settings.endUserCreditProductSelection, writeString);
    w.optionalMember(kKeys[2], settings.failedNoVideoStream, writeString);
    w.optionalMember(kKeys[3], settings.idBackFailDirectionStepId, writeString);
    w.optionalMember(kKeys[4], settings.idFaceFailDirectionStepId, writeString);
    w.optionalMember(kKeys[5], settings.livenessFailDirectionStepId, writeString);
    w.optionalMember(kKeys[6], settings.noCameraAccessDirectionStepId, writeString);
    w.optionalMember(kKeys[7], settings.noCameraDirectionId, writeString);
    w.optionalMember(kKeys[8], settings.noFaceDirectionStepId, writeString);
    w.optionalMember(kKeys[9], settings.noServiceDirectionStepId, writeString);
    w.optionalMember(kKeys[10], settings.products, writeArrayOfRecords);
    w.optionalMember(kKeys[11], settings.signallingUrl, writeUrl);
    w.optionalMember(kKeys[12], settings.streamUrl, writeUrl);
    w.optionalMember(kKeys[13], settings.userHash, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(SubmissionSettings)

} // namespace tessara
