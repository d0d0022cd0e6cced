#include "tessara/documents/GroupControlOperatorType.h"

namespace tessara {

std::string_view rawValueUtf8(GroupControlOperatorType type) {
    return type == GroupControlOperatorType::equal ? "EQUAL" : "NOT_EQ";
}

QString rawValue(GroupControlOperatorType type) {
    return QString::fromLatin1(rawValueUtf8(type));
}

std::optional<GroupControlOperatorType> groupControlOperatorTypeFromRaw(std::string_view raw) {
    if (raw == "EQUAL")
        return GroupControlOperatorType::equal;
    if (raw == "NOT_EQ")
        return GroupControlOperatorType::notEqual;
    return std::nullopt;
}

std::optional<GroupControlOperatorType> groupControlOperatorTypeFromRaw(QStringView raw) {
    if (raw == u"EQUAL")
        return GroupControlOperatorType::equal;
    if (raw == u"NOT_EQ")
        return GroupControlOperatorType::notEqual;
    return std::nullopt;
}

} // namespace tessara
