#pragma once

// How one member value travels as JSON. A codec is a type with
//   static T read(JsonValue)                 (fails on a wrong JSON type; absent or null fails too)
//   static void write(JsonWriter&, const T&)
// and, when a bad value must stop the program rather than fail the document, `fatalOnBadInput`.
// DefaultCodec maps a member type to its codec; record tables name a codec only for special wire
// forms (SpecialCodecs.h). Internal to the documents code.

#include "tessara/documents/FieldType.h"
#include "tessara/documents/GroupControlOperatorType.h"
#include "tessara/documents/JsonDom.h"
#include "tessara/documents/JsonReader.h"
#include "tessara/documents/JsonWriter.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tessara {

// Every record's reader and writer, defined by its table (see RecordTable.h).
#define TESSARA_DECLARE_RECORD_CODING(Type)                                                                  \
    struct Type;                                                                                             \
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

struct TextCodec {
    static QString read(JsonValue value) { return JsonReader::readString(value); }
    static void write(JsonWriter& writer, const QString& value) { writer.writeString(value); }
};

struct BoolCodec {
    static bool read(JsonValue value) { return JsonReader::readBool(value); }
    static void write(JsonWriter& writer, bool value) { writer.writeBool(value); }
};

struct Int64Codec {
    static qint64 read(JsonValue value) { return JsonReader::readInt64(value); }
    static void write(JsonWriter& writer, qint64 value) { writer.writeInt64(value); }
};

struct UInt64Codec {
    static quint64 read(JsonValue value) { return JsonReader::readUInt64(value); }
    static void write(JsonWriter& writer, quint64 value) { writer.writeUInt64(value); }
};

struct DecimalCodec {
    static Decimal read(JsonValue value) { return JsonReader::readDecimal(value); }
    static void write(JsonWriter& writer, const Decimal& value) { writer.writeDecimal(value); }
};

// An enumeration travels as its wire string; an unknown string fails.
template <typename E, std::optional<E> (*FromRaw)(std::string_view)> struct EnumCodec {
    static E read(JsonValue value) {
        const auto decoded = FromRaw(JsonReader::readUtf8(value));
        if (!decoded)
            JsonReader::fail();
        return *decoded;
    }
    static void write(JsonWriter& writer, E value) { writer.writeUtf8String(rawValueUtf8(value)); }
};

template <typename T> struct RecordCodec {
    static T read(JsonValue value) {
        T out{};
        readJson(value, out);
        return out;
    }
    static void write(JsonWriter& writer, const T& value) { writeJson(writer, value); }
};

template <typename Element> struct ArrayCodec {
    using T = decltype(Element::read(JsonValue()));
    static std::vector<T> read(JsonValue value) {
        return JsonReader::readArray<T>(value, [](JsonValue element) { return Element::read(element); });
    }
    static void write(JsonWriter& writer, const std::vector<T>& values) {
        writer.beginArray();
        for (const T& value : values)
            Element::write(writer, value);
        writer.endArray();
    }
};

template <typename T> struct DefaultCodec {
    static_assert(
        requires(JsonValue value, T& out) { readJson(value, out); },
        "no codec for this member type: name one in the table or add it here");
    using type = RecordCodec<T>;
};
template <> struct DefaultCodec<QString> { using type = TextCodec; };
template <> struct DefaultCodec<bool> { using type = BoolCodec; };
template <> struct DefaultCodec<qint64> { using type = Int64Codec; };
template <> struct DefaultCodec<quint64> { using type = UInt64Codec; };
template <> struct DefaultCodec<Decimal> { using type = DecimalCodec; };
template <> struct DefaultCodec<FieldType> { using type = EnumCodec<FieldType, &fieldTypeFromRaw>; };
template <> struct DefaultCodec<GroupControlOperatorType> {
    using type = EnumCodec<GroupControlOperatorType, &groupControlOperatorTypeFromRaw>;
};
template <typename T> struct DefaultCodec<std::vector<T>> {
    using type = ArrayCodec<typename DefaultCodec<T>::type>;
};

template <typename T> using DefaultCodecOf = typename DefaultCodec<T>::type;

} // namespace tessara
