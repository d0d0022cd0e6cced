#include "tessara/backend/TSRBackendError.h"

#include "tessara/documents/JsonCoding.h"

namespace tessara {

std::optional<TSRBackendError> TSRBackendError::decode(QByteArrayView json) {
    // Same no-coercion rule as every document: a number or null under "message" is as bad
    // as no key at all.
    if (auto message = decodeRequiredStringMember(json, "message"))
        return TSRBackendError{*message};
    return std::nullopt;
}

} // namespace tessara
