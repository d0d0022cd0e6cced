#pragma once

#include <QByteArrayView>
#include <QtGlobal>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

class JsonValue;

// A parsed JSON text held as one flat array of nodes in document order, plus one pool of
// unescaped strings. Unlike a general-purpose JSON tree it keeps the source text of every
// non-integer number, so decimals are read exactly, and it costs one allocation per array rather
// than one per value. Immutable once built; safe to read from any thread.
class JsonDom {
public:
    enum class Kind : quint8 { null, boolean, integer, unsignedInteger, number, string, array, object };

    // Deeper nesting is rejected, so hostile input cannot exhaust the stack of the record readers.
    static constexpr int kMaxDepth = 256;

    // std::nullopt for malformed JSON, trailing bytes, nesting beyond kMaxDepth or more than
    // 2 GiB of input.
    static std::optional<JsonDom> parse(QByteArrayView bytes);

    JsonValue root() const;

    struct Node {
        Kind kind = Kind::null;
        bool boolean = false;
        quint32 end = 0;       // index past this node's subtree
        quint32 count = 0;     // children of an array or object
        quint32 keyOffset = 0; // member name in the pool, for members of an object
        quint32 keyLength = 0;
        quint32 textOffset = 0; // string value, or the source text of a `number`
        quint32 textLength = 0;
        union {
            qint64 integer;
            quint64 unsignedInteger;
        };
        Node()
            : integer(0) {}
    };

private:
    friend class JsonValue;
    friend class JsonDomBuilder;
    std::vector<Node> nodes_;
    std::string pool_;
};

// A light view of one node of a JsonDom; an invalid view stands for an absent member.
class JsonValue {
public:
    JsonValue() = default;
    JsonValue(const JsonDom* dom, quint32 index)
        : dom_(dom)
        , index_(index) {}

    bool isValid() const { return dom_ != nullptr; }
    JsonDom::Kind kind() const { return node().kind; }
    bool isNull() const { return kind() == JsonDom::Kind::null; }
    // Absent or null: what an optional key treats as "no value".
    bool isAbsentOrNull() const { return !isValid() || isNull(); }

    bool boolean() const { return node().boolean; }
    qint64 integer() const { return node().integer; }
    quint64 unsignedInteger() const { return node().unsignedInteger; }
    // Unescaped UTF-8 of a string, or the source text of a `number` with '.' as separator.
    std::string_view text() const {
        const auto& n = node();
        return std::string_view(dom_->pool_.data() + n.textOffset, n.textLength);
    }
    // The member name when this value sits in an object.
    std::string_view key() const {
        const auto& n = node();
        return std::string_view(dom_->pool_.data() + n.keyOffset, n.keyLength);
    }

    // Elements of an array or members of an object, in document order.
    quint32 size() const { return node().count; }
    class Iterator {
    public:
        Iterator(const JsonDom* dom, quint32 index)
            : dom_(dom)
            , index_(index) {}
        JsonValue operator*() const { return JsonValue(dom_, index_); }
        Iterator& operator++() {
            index_ = dom_->nodes_[index_].end;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return index_ != other.index_; }

    private:
        const JsonDom* dom_;
        quint32 index_;
    };
    Iterator begin() const { return Iterator(dom_, index_ + 1); }
    Iterator end() const { return Iterator(dom_, node().end); }

    // The last member named `key` of an object (duplicate keys: the last wins); invalid when the
    // key is absent or this is no object.
    JsonValue member(std::string_view key) const;

private:
    const JsonDom::Node& node() const { return dom_->nodes_[index_]; }

    const JsonDom* dom_ = nullptr;
    quint32 index_ = 0;
};

inline JsonValue JsonDom::root() const {
    return JsonValue(this, 0);
}

} // namespace tessara
