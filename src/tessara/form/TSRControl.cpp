#include "tessara/form/TSRControl.h"

#include "tessara/platform/FatalError.h"

namespace tessara {

namespace {
const FieldJSON& requireField(const std::optional<FieldJSON>& field) {
    if (!field)
        fatalError(QStringLiteral("A control was asked for its field before the field was set."));
    return *field;
}
} // namespace

FieldType TSRControl::type() const {
    return requireField(field).type;
}

QString TSRControl::key() const {
    const auto& f = requireField(field);
    if (!f.key)
        fatalError(QStringLiteral("A field of type %1 has no key.").arg(rawValue(f.type)));
    return *f.key;
}

bool TSRControl::isRequired() const {
    return requireField(field).isRequired.value_or(false);
}

} // namespace tessara
