#include "tessara/documents/JsonDom.h"

#include <limits>
#include <nlohmann/json.hpp>

namespace tessara {

// Receives the parser's events and appends nodes in document order. Containers are closed by
// writing the index past their subtree into `end`, which is what makes sibling iteration O(1).
class JsonDomBuilder {
public:
    using json = nlohmann::json;

    explicit JsonDomBuilder(JsonDom& dom)
        : dom_(dom) {}

    bool null() {
        addScalar(JsonDom::Kind::null);
        return true;
    }
    bool boolean(bool value) {
        addScalar(JsonDom::Kind::boolean).boolean = value;
        return true;
    }
    bool number_integer(json::number_integer_t value) {
        addScalar(JsonDom::Kind::integer).integer = value;
        return true;
    }
    bool number_unsigned(json::number_unsigned_t value) {
        // Values that fit int64 arrive here too; keep one kind per range so readers see one case.
        if (value <= quint64(std::numeric_limits<qint64>::max()))
            addScalar(JsonDom::Kind::integer).integer = qint64(value);
        else
            addScalar(JsonDom::Kind::unsignedInteger).unsignedInteger = value;
        return true;
    }
    bool number_float(json::number_float_t, const json::string_t& text) {
        auto& node = addScalar(JsonDom::Kind::number);
        node.textOffset = quint32(dom_.pool_.size());
        node.textLength = quint32(text.size());
        dom_.pool_.append(text);
        // The lexer writes the C locale's decimal separator into its token; keep '.' for readers.
        for (size_t i = node.textOffset; i < dom_.pool_.size(); ++i)
            if (dom_.pool_[i] == ',')
                dom_.pool_[i] = '.';
        return true;
    }
    bool string(json::string_t& value) {
        auto& node = addScalar(JsonDom::Kind::string);
        node.textOffset = quint32(dom_.pool_.size());
        node.textLength = quint32(value.size());
        dom_.pool_.append(value);
        return true;
    }
    bool binary(json::binary_t&) { return false; }
    bool start_object(std::size_t) { return open(JsonDom::Kind::object); }
    bool key(json::string_t& name) {
        keyOffset_ = quint32(dom_.pool_.size());
        keyLength_ = quint32(name.size());
        dom_.pool_.append(name);
        return true;
    }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(JsonDom::Kind::array); }
    bool end_array() { return close(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) { return false; }

private:
    JsonDom::Node& addNode(JsonDom::Kind kind) {
        const auto index = quint32(dom_.nodes_.size());
        auto& node = dom_.nodes_.emplace_back();
        node.kind = kind;
        node.end = index + 1;
        if (!open_.empty()) {
            auto& parent = dom_.nodes_[open_.back()];
            ++parent.count;
            if (parent.kind == JsonDom::Kind::object) {
                node.keyOffset = keyOffset_;
                node.keyLength = keyLength_;
            }
        }
        return node;
    }
    JsonDom::Node& addScalar(JsonDom::Kind kind) { return addNode(kind); }
    bool open(JsonDom::Kind kind) {
        if (open_.size() >= size_t(JsonDom::kMaxDepth))
            return false;
        addNode(kind);
        open_.push_back(quint32(dom_.nodes_.size() - 1));
        return true;
    }
    bool close() {
        dom_.nodes_[open_.back()].end = quint32(dom_.nodes_.size());
        open_.pop_back();
        return true;
    }

    JsonDom& dom_;
    std::vector<quint32> open_;
    quint32 keyOffset_ = 0;
    quint32 keyLength_ = 0;
};

std::optional<JsonDom> JsonDom::parse(QByteArrayView bytes) {
    // Node indices and pool offsets are 32-bit.
    if (bytes.size() >= qsizetype(std::numeric_limits<qint32>::max()))
        return std::nullopt;
    JsonDom dom;
    // Rough guesses from typical documents; they only save reallocations.
    dom.nodes_.reserve(size_t(bytes.size() / 12 + 4));
    dom.pool_.reserve(size_t(bytes.size() / 2 + 16));
    JsonDomBuilder builder(dom);
    const char* begin = bytes.data();
    const char* end = begin + bytes.size();
    bool ok = false;
    try {
        ok = nlohmann::json::sax_parse(begin, end, &builder, nlohmann::json::input_format_t::json, true);
    } catch (const std::exception&) {
        ok = false;
    }
    if (!ok || dom.nodes_.empty())
        return std::nullopt;
    return dom;
}

JsonValue JsonValue::member(std::string_view key) const {
    if (!isValid() || kind() != JsonDom::Kind::object)
        return JsonValue();
    JsonValue found;
    for (JsonValue child : *this)
        if (child.key() == key)
            found = child;
    return found;
}

} // namespace tessara
