#include "tessara/form/controls/TSRLinkButton.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/form/ParentResponders.h"
#include "tessara/form/TSRLinkOpener.h"
#include "tessara/platform/FatalError.h"

namespace tessara {

namespace {
constexpr int kMinimumHeight = 44; // a comfortable touch target for a one-line link
} // namespace

TSRLinkButton::TSRLinkButton(QWidget* parent)
    : QPushButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setFlat(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TSRLinkButton::setup() {
    applyAccessibilityIdentifier();
    TSRAppearance& theme = currentAppearance();
    setText(field->label.value_or(QStringLiteral("MISSING_BUTTON_TITLE")));
    setFont(theme.font());
    setMinimumHeight(kMinimumHeight);
    const QColor tint = theme.tintColor();
    setStyleSheet(QStringLiteral("QPushButton{color:%1;background:transparent;border:none;padding:0px;"
                                 "text-align:left;}"
                                 "QPushButton:pressed{color:%2;}"
                                 "QPushButton:focus{text-decoration:underline;}")
                      .arg(tint.name(QColor::HexArgb), tint.darker(140).name(QColor::HexArgb)));
    connect(this, &QPushButton::clicked, this, &TSRLinkButton::linkAction);
}

std::optional<QUrl> TSRLinkButton::urlFromValue(const std::optional<QString>& value) {
    if (!value)
        return std::nullopt;
    const QString text = value->trimmed();
    const QUrl parsed(text, QUrl::StrictMode);
    if (!parsed.isValid() || text.isEmpty())
        return std::nullopt;
    if (!parsed.scheme().isEmpty())
        return parsed;
    // "www.example.com/terms" means a web address: the text becomes its host and path, not a
    // relative path under an https scheme.
    const QString withScheme = text.startsWith(QLatin1String("//")) ? QStringLiteral("https:") + text
                                                                    : QStringLiteral("https://") + text;
    return QUrl(withScheme, QUrl::StrictMode);
}

void TSRLinkButton::linkAction() {
    TSRLinkOpener* opener = firstResponder<TSRLinkOpener>(this);
    if (!opener)
        return;
    const std::optional<QUrl> url = urlFromValue(field->value);
    if (!url)
        return;
    if (!url->isValid())
        fatalError(QStringLiteral("The link %1 does not give a URL: %2")
                       .arg(key(), field->value.value_or(QString())));
    opener->openLink(*url);
}

} // namespace tessara
