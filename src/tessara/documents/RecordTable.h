#pragma once

// One table per JSON record, from which both its reading and its writing follow.
//
// Adding a record: write the plain struct in its own header (std::optional for keys that may be
// absent or null), add its line to the lists in JsonCoding.h and RecordCodecs.h, and in its .cpp
// list one field("wireKey", &Type::member) per key, keys in ascending byte order (checked when
// compiling), then TESSARA_DEFINE_RECORD(Type, table). The codec follows from the member type;
// name one as a third argument only for a special wire form (see RecordCodecs.h).
// Internal to the documents code.

#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/RecordCodecs.h"

#include <array>
#include <tuple>
#include <type_traits>
#include <utility>

namespace tessara {

namespace recordtable {
template <typename T> struct Unwrapped {
    using type = T;
    static constexpr bool optional = false;
};
template <typename T> struct Unwrapped<std::optional<T>> {
    using type = T;
    static constexpr bool optional = true;
};
template <typename Codec> constexpr bool fatalOnBadInput() {
    if constexpr (requires { Codec::fatalOnBadInput; })
        return Codec::fatalOnBadInput;
    return false;
}
} // namespace recordtable

// One member of a record: its wire key, where it lives and how its value travels. An optional
// member reads absent and null as std::nullopt and is left out of the bytes when absent; any other
// member must be present and non-null.
template <typename Record_, typename Member, typename Codec> struct RecordField {
    using Record = Record_;
    static constexpr bool optional = recordtable::Unwrapped<Member>::optional;
    static constexpr bool readsLast = recordtable::fatalOnBadInput<Codec>();

    std::string_view key;
    Member Record::*member;

    void read(JsonValue value, Record& out) const {
        if constexpr (optional) {
            if (value.isAbsentOrNull())
                (out.*member).reset();
            else
                out.*member = Codec::read(value);
        } else {
            out.*member = Codec::read(value);
        }
    }

    void write(JsonWriter& writer, const Record& record) const {
        const Member& value = record.*member;
        if constexpr (optional) {
            if (!value)
                return;
            writer.key(key);
            Codec::write(writer, *value);
        } else {
            writer.key(key);
            Codec::write(writer, value);
        }
    }
};

template <typename Record, typename Member>
constexpr auto field(std::string_view key, Member Record::*member) {
    using Codec = DefaultCodecOf<typename recordtable::Unwrapped<Member>::type>;
    return RecordField<Record, Member, Codec>{key, member};
}

template <typename Record, typename Member, typename Codec>
constexpr auto field(std::string_view key, Member Record::*member, Codec) {
    return RecordField<Record, Member, Codec>{key, member};
}

template <typename... Fields> struct RecordTable {
    using Record = typename std::tuple_element_t<0, std::tuple<Fields...>>::Record;
    static_assert((std::is_same_v<typename Fields::Record, Record> && ...), "one record per table");

    std::tuple<Fields...> fields;
    std::array<std::string_view, sizeof...(Fields)> keys;

    constexpr explicit RecordTable(Fields... entries)
        : fields{entries...}
        , keys{entries.key...} {}

    // The table order is the written order, so this is the one check that bytes go out sorted.
    constexpr bool keysAscending() const {
        for (size_t i = 1; i < keys.size(); ++i)
            if (!(keys[i - 1] < keys[i]))
                return false;
        return true;
    }

    void read(JsonValue object, Record& out) const {
        const auto found = JsonReader::members(object, keys);
        // Whatever fails the document is read before whatever stops the program, so a document that
        // is wrong anyway never reaches a fatal check.
        [&]<size_t... I>(std::index_sequence<I...>) {
            ((Fields::readsLast ? void() : std::get<I>(fields).read(found[I], out)), ...);
            ((Fields::readsLast ? std::get<I>(fields).read(found[I], out) : void()), ...);
        }
        (std::index_sequence_for<Fields...>{});
    }

    void write(JsonWriter& writer, const Record& record) const {
        writer.beginObject();
        std::apply([&](const auto&... entry) { (entry.write(writer, record), ...); }, fields);
        writer.endObject();
    }
};

template <typename T> std::optional<T> decodeValue(QByteArrayView bytes) {
    const auto dom = JsonDom::parse(bytes);
    if (!dom)
        return std::nullopt;
    try {
        return DefaultCodecOf<T>::read(dom->root());
    } catch (const JsonDecodeFailure&) {
        return std::nullopt;
    }
}

template <typename T> std::optional<QByteArray> encodeValue(const T& value) {
    JsonWriter writer;
    DefaultCodecOf<T>::write(writer, value);
    return writer.take();
}

// The public decodeDocument/encodeDocument of a record or a list of records.
#define TESSARA_DEFINE_JSON_CODING(Type)                                                                     \
    template <> std::optional<Type> decodeDocument<Type>(QByteArrayView bytes) {                             \
        return decodeValue<Type>(bytes);                                                                     \
    }                                                                                                        \
    template <> std::optional<QByteArray> encodeDocument<Type>(const Type& value) {                          \
        return encodeValue(value);                                                                           \
    }

#define TESSARA_DEFINE_RECORD(Type, table)                                                                   \
    static_assert(std::is_same_v<std::remove_cvref_t<decltype(table)>::Record, Type>,                        \
                  "the table describes another record");                                                     \
    static_assert(table.keysAscending(), "list keys in ascending byte order: the order they are written");   \
    void readJson(JsonValue value, Type& out) {                                                              \
        table.read(value, out);                                                                              \
    }                                                                                                        \
    void writeJson(JsonWriter& writer, const Type& value) {                                                  \
        table.write(writer, value);                                                                          \
    }                                                                                                        \
    TESSARA_DEFINE_JSON_CODING(Type)

} // namespace tessara
