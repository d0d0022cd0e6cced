#include "host/ScreenControl.h"

#include <array>

namespace tessara::demo {

namespace {

struct KindName {
    ScreenControl::Kind kind;
    const char* name;
};

// The one place that ties the SDK's control names to what the autopilot can do with them.
constexpr std::array kKinds{
    KindName{ScreenControl::Kind::input, "TSRInputField"},
    KindName{ScreenControl::Kind::dropdown, "TSRDropdownButton"},
    KindName{ScreenControl::Kind::area, "TSRInputArea"},
    KindName{ScreenControl::Kind::checkbox, "TSRCheckbox"},
    KindName{ScreenControl::Kind::consent, "TSRConsentToggle"},
    KindName{ScreenControl::Kind::radio, "TSRRadioButtonView"},
    KindName{ScreenControl::Kind::date, "TSRDatePicker"},
    KindName{ScreenControl::Kind::upload, "TSRUploadFileView"},
    KindName{ScreenControl::Kind::flow, "TSRFlowButton"},
    KindName{ScreenControl::Kind::closing, "TSRA1Button"},
};

QString nameOf(ScreenControl::Kind kind) {
    for (const KindName& entry : kKinds) {
        if (entry.kind == kind)
            return QLatin1String(entry.name);
    }
    return {};
}

void collect(QWidget& parent, std::vector<ScreenControl>& out) {
    for (QObject* child : parent.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget)
            continue;
        if (std::optional<ScreenControl> control = ScreenControl::of(widget)) {
            // A control's parts are not controls of their own.
            out.push_back(*control);
            continue;
        }
        collect(*widget, out);
    }
}

} // namespace

ScreenControl::ScreenControl(Kind kind, QString key, QWidget* widget)
    : kind_(kind)
    , key_(std::move(key))
    , widget_(widget) {}

std::optional<ScreenControl> ScreenControl::of(QWidget* widget) {
    if (!widget)
        return std::nullopt;
    const QString name = widget->objectName();
    for (const KindName& entry : kKinds) {
        const QLatin1String prefix(entry.name);
        if (!name.startsWith(prefix))
            continue;
        // The closing button may have no key.
        if (name.size() == prefix.size() && entry.kind == Kind::closing)
            return ScreenControl(entry.kind, QString(), widget);
        if (name.size() > prefix.size() + 1 && name.at(prefix.size()) == QLatin1Char('.'))
            return ScreenControl(entry.kind, name.mid(prefix.size() + 1), widget);
    }
    return std::nullopt;
}

std::vector<ScreenControl> ScreenControl::inOrder(QWidget& screen) {
    std::vector<ScreenControl> out;
    collect(screen, out);
    return out;
}

QWidget* ScreenControl::inner(Kind kind) const {
    if (!widget_)
        return nullptr;
    return widget_->findChild<QWidget*>(nameOf(kind) + QLatin1Char('.') + key_);
}

QString ScreenControl::radioRowPrefix(const QString& key) {
    return QStringLiteral("TSRRadioButton.") + key + QLatin1Char('.');
}

} // namespace tessara::demo
