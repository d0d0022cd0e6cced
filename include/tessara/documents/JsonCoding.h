#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>
#include <string_view>
#include <vector>

namespace tessara {

struct AccrualJSON;
struct CreditInstalmentDatesJSON;
struct CreditInstalmentDetailsJSON;
struct CreditProductJSON;
struct CreditProductPeriodJSON;
struct FieldJSON;
struct FieldOption;
struct FieldValueDTO;
struct GroupControlConditionJSON;
struct InstalmentDetailsDTO;
struct KYCStatusJSON;
struct SubmissionContainer;
struct SubmissionCreateDTO;
struct SubmissionJSON;
struct SubmissionSettings;
struct SubmissionSettingsItem;
struct SubmitStepDTO;
struct UploadFileDTO;

/// Decodes a whole document; std::nullopt on any decoding failure (malformed JSON included).
/// Pure and thread-safe: backend answers are decoded off the main thread.
/// Supported T: every record of tessara/documents, std::vector<SubmissionJSON> and
/// std::vector<CreditProductJSON>.
template <typename T> std::optional<T> decodeDocument(QByteArrayView bytes);

/// Encodes with keys in sorted order and absent optionals left out (never null). The bytes are
/// compact; non-ASCII text is written as UTF-8. std::nullopt when the value cannot be encoded
/// (text with an unpaired surrogate, an invalid date).
template <typename T> std::optional<QByteArray> encodeDocument(const T& value);

/// Reads the one required string member `key` of a JSON object document, e.g. the "message" of a
/// backend error body; std::nullopt when the bytes are no object or the member is absent, null or
/// not a string.
std::optional<QString> decodeRequiredStringMember(QByteArrayView bytes, std::string_view key);

#define TESSARA_DECLARE_JSON_CODING(Type)                                                                    \
    template <> std::optional<Type> decodeDocument<Type>(QByteArrayView bytes);                              \
    template <> std::optional<QByteArray> encodeDocument<Type>(const Type& value);

TESSARA_DECLARE_JSON_CODING(AccrualJSON)
TESSARA_DECLARE_JSON_CODING(CreditInstalmentDatesJSON)
TESSARA_DECLARE_JSON_CODING(CreditInstalmentDetailsJSON)
TESSARA_DECLARE_JSON_CODING(CreditProductJSON)
TESSARA_DECLARE_JSON_CODING(CreditProductPeriodJSON)
TESSARA_DECLARE_JSON_CODING(FieldJSON)
TESSARA_DECLARE_JSON_CODING(FieldOption)
TESSARA_DECLARE_JSON_CODING(FieldValueDTO)
TESSARA_DECLARE_JSON_CODING(GroupControlConditionJSON)
TESSARA_DECLARE_JSON_CODING(InstalmentDetailsDTO)
TESSARA_DECLARE_JSON_CODING(KYCStatusJSON)
TESSARA_DECLARE_JSON_CODING(SubmissionContainer)
TESSARA_DECLARE_JSON_CODING(SubmissionCreateDTO)
TESSARA_DECLARE_JSON_CODING(SubmissionJSON)
TESSARA_DECLARE_JSON_CODING(SubmissionSettings)
TESSARA_DECLARE_JSON_CODING(SubmissionSettingsItem)
TESSARA_DECLARE_JSON_CODING(SubmitStepDTO)
TESSARA_DECLARE_JSON_CODING(UploadFileDTO)
TESSARA_DECLARE_JSON_CODING(std::vector<SubmissionJSON>)
TESSARA_DECLARE_JSON_CODING(std::vector<CreditProductJSON>)

#undef TESSARA_DECLARE_JSON_CODING

} // namespace tessara
