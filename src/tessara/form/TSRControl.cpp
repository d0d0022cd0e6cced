#include "tessara/form/TSRControl.h"

#include "tessara/platform/FatalError.h"
#include "tessara/platform/NotificationBus.h"

#include <QMetaObject>

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

QString TSRControl::className() const {
    const QString name = QString::fromLatin1(widget()->metaObject()->className());
    const qsizetype colons = name.lastIndexOf(QLatin1String("::"));
    return colons < 0 ? name : name.mid(colons + 2);
}

QString TSRControl::accessibilityIdentifier() const {
    return className() + QLatin1Char('.') + key();
}

void TSRControl::applyAccessibilityIdentifier() {
    const QString identifier = accessibilityIdentifier();
    widget()->setObjectName(identifier);
    widget()->setAccessibleName(identifier);
}

void TSRControl::announceValue() {
    if (!value)
        fatalError(QStringLiteral("The control %1 announced a change without a value.")
                       .arg(accessibilityIdentifier()));
    NotificationBus::instance().post(NotificationBus::frameworkName(key()),
                                     {{QStringLiteral("value"), *value}});
}

} // namespace tessara
