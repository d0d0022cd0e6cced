#pragma once

// Shared by the record files: each record's reader and writer, and the glue that turns them into
// decodeDocument/encodeDocument. Internal to the documents code.

#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/JsonDom.h"
#include "tessara/documents/JsonReader.h"
#include "tessara/documents/JsonWriter.h"

#include <vector>

namespace tessara {

#define TESSARA_DECLARE_RECORD_CODING(Type)                                                                  \
    void readJson(JsonValue value, Type& out);                                                               \
    void writeJson(JsonWriter& writer, const Type& value);

TESSARA_DECLARE_RECORD_CODING(AccrualJSON)
TESSARA_DECLARE_RECORD_CODING(CreditInstalmentDatesJSON)
TESSARA_DECLARE_RECORD_CODING(CreditInstalmentDetailsJSON)
TESSARA_DECLARE_RECORD_CODING(CreditProductJSON)
TESSARA_DECLARE_RECORD_CODING(CreditProductPeriodJSON)
TESSARA_DECLARE_RECORD_CODING(FieldJSON)
TESSARA_DECLARE_RECORD_CODING(FieldOption)
TESSARA_DECLARE_RECORD_CODING(FieldValueDTO)
TESSARA_DECLARE_RECORD_CODING(GroupControlConditionJSON)
TESSARA_DECLARE_RECORD_CODING(InstalmentDetailsDTO)
TESSARA_DECLARE_RECORD_CODING(KYCStatusJSON)
TESSARA_DECLARE_RECORD_CODING(SubmissionContainer)
TESSARA_DECLARE_RECORD_CODING(SubmissionCreateDTO)
TESSARA_DECLARE_RECORD_CODING(SubmissionJSON)
TESSARA_DECLARE_RECORD_CODING(SubmissionSettings)
TESSARA_DECLARE_RECORD_CODING(SubmissionSettingsItem)
TESSARA_DECLARE_RECORD_CODING(SubmitStepDTO)
TESSARA_DECLARE_RECORD_CODING(UploadFileDTO)

#undef TESSARA_DECLARE_RECORD_CODING

// Callables for JsonReader::readArray/readOptional and the JsonWriter member helpers.
template <typename T> T readRecord(JsonValue value) {
    T out{};
    readJson(value, out);
    return out;
}
inline constexpr auto readString = [](JsonValue value) { return JsonReader::readString(value); };
inline constexpr auto readBool = [](JsonValue value) { return JsonReader::readBool(value); };
inline constexpr auto readInt64 = [](JsonValue value) { return JsonReader::readInt64(value); };
inline constexpr auto readUInt64 = [](JsonValue value) { return JsonReader::readUInt64(value); };
inline constexpr auto readDecimal = [](JsonValue value) { return JsonReader::readDecimal(value); };
template <typename T>
inline constexpr auto readArrayOf = [](JsonValue value) {
    return JsonReader::readArray<T>(value, [](JsonValue element) { return readRecord<T>(element); });
};

inline constexpr auto writeRecord = [](JsonWriter& writer, const auto& value) { writeJson(writer, value); };
inline constexpr auto writeString = [](JsonWriter& writer, const QString& value) {
    writer.writeString(value);
};
inline constexpr auto writeBool = [](JsonWriter& writer, bool value) { writer.writeBool(value); };
inline constexpr auto writeInt64 = [](JsonWriter& writer, qint64 value) { writer.writeInt64(value); };
inline constexpr auto writeUInt64 = [](JsonWriter& writer, quint64 value) { writer.writeUInt64(value); };
inline constexpr auto writeDecimal = [](JsonWriter& writer, const Decimal& value) {
    writer.writeDecimal(value);
};
inline constexpr auto writeArrayOfRecords = [](JsonWriter& writer, const auto& values) {
    writer.writeArray(values, writeRecord);
};

template <typename T> std::optional<T> decodeRecord(QByteArrayView bytes) {
    const auto dom = JsonDom::parse(bytes);
    if (!dom)
        return std::nullopt;
    try {
        return readRecord<T>(dom->root());
    } catch (const JsonDecodeFailure&) {
        return std::nullopt;
    }
}

template <typename T> std::optional<QByteArray> encodeRecord(const T& value) {
    JsonWriter writer;
    writeJson(writer, value);
    return writer.take();
}

#define TESSARA_DEFINE_JSON_CODING(Type)                                                                     \
    template <> std::optional<Type> decodeDocument<Type>(QByteArrayView bytes) {                             \
        return decodeRecord<Type>(bytes);                                                                    \
    }                                                                                                        \
    template <> std::optional<QByteArray> encodeDocument<Type>(const Type& value) {                          \
        return encodeRecord(value);                                                                          \
    }

} // namespace tessara
