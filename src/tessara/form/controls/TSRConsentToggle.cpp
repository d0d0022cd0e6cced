#include "tessara/form/controls/TSRConsentToggle.h"

#include "tessara/form/CurrentAppearance.h"
#include "tessara/form/ParentResponders.h"
#include "tessara/form/TSRLinkFollower.h"
#include "tessara/form/controls/Glyphs.h"
#include "tessara/form/controls/TSRCheckbox.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/NotificationBus.h"

#include <QFontMetrics>
#include <QPushButton>
#include <QResizeEvent>
#include <algorithm>

namespace tessara {

namespace {
constexpr int kLinkSpacing = 5; // between the checkbox and the link
constexpr int kChevronSize = 14;

// Lays the checkbox at the leading edge and the link right after it, on the same baseline.
class ConsentLayout {
public:
    ConsentLayout(const TSRCheckbox* checkbox, const QPushButton* link, int width)
        : linkSize(link->sizeHint()) {
        const int available = std::max(1, width - linkSize.width() - kLinkSpacing);
        checkboxWidth = std::min(checkbox->sizeHint().width(), available);
        checkboxHeight = checkbox->heightForWidth(checkboxWidth);
    }
    QSize linkSize;
    int checkboxWidth = 0;
    int checkboxHeight = 0;
};
} // namespace

TSRConsentToggle::TSRConsentToggle(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

TSRConsentToggle::~TSRConsentToggle() = default;

void TSRConsentToggle::setup() {
    applyAccessibilityIdentifier();
    TSRAppearance& theme = currentAppearance();

    checkbox_ = new TSRCheckbox(this);
    checkbox_->field = field;
    checkbox_->setup();

    linkButton_ = new QPushButton(this);
    linkButton_->setObjectName(accessibilityIdentifier() + QStringLiteral(".linkButton"));
    linkButton_->setAccessibleName(linkButton_->objectName());
    // The link names the document it opens; the checkbox carries the label.
    linkButton_->setText(field->directionLabel.value_or(QStringLiteral("MISSING_BUTTON_TITLE")));
    linkButton_->setFont(theme.consentLinkButtonFont());
    linkButton_->setCursor(Qt::PointingHandCursor);
    linkButton_->setFlat(true);
    const QColor tint = theme.tintColor();
    linkButton_->setIcon(glyphIcon(Glyph::chevronRight, QSize(kChevronSize, kChevronSize), tint));
    linkButton_->setIconSize(QSize(kChevronSize, kChevronSize));
    // The chevron follows the title.
    linkButton_->setLayoutDirection(Qt::RightToLeft);
    linkButton_->setStyleSheet(QStringLiteral("QPushButton{color:%1;background:transparent;border:none;"
                                              "padding:2px 0px;text-align:left;}"
                                              "QPushButton:pressed{color:%2;}"
                                              "QPushButton:focus{text-decoration:underline;}")
                                   .arg(tint.name(QColor::HexArgb), tint.darker(140).name(QColor::HexArgb)));
    connect(linkButton_, &QPushButton::clicked, this, &TSRConsentToggle::linkAction);

    NotificationBus::instance().subscribe(
        NotificationBus::frameworkName(key()), this,
        [this](const QVariantMap& userInfo) { handleNotification(userInfo); });
    updateGeometry();
}

void TSRConsentToggle::handleNotification(const QVariantMap& userInfo) {
    const auto it = userInfo.constFind(QStringLiteral("value"));
    if (it == userInfo.constEnd() || it->typeId() != QMetaType::QString)
        return;
    value = it->toString();
}

void TSRConsentToggle::linkAction() {
    TSRLinkFollower* follower = firstResponder<TSRLinkFollower>(this);
    if (!follower)
        return;
    if (!field)
        fatalError(QStringLiteral("A consent link was pressed on a control without a field."));
    follower->followLink(field->directionId, key());
}

bool TSRConsentToggle::hasValue() const {
    return value && !value->isEmpty();
}

std::optional<ControlValidationError> TSRConsentToggle::validate(bool) {
    // A consent has to stand ticked when the step goes out.
    if (value == QStringLiteral("true"))
        return std::nullopt;
    return ControlValidationError{ControlValidationError::Kind::fieldValueInvalid, this};
}

QSize TSRConsentToggle::sizeHint() const {
    if (!checkbox_)
        return QWidget::sizeHint();
    const QSize box = checkbox_->sizeHint();
    const QSize link = linkButton_->sizeHint();
    const int w = box.width() + kLinkSpacing + link.width();
    return {w, heightForWidth(w)};
}

QSize TSRConsentToggle::minimumSizeHint() const {
    if (!checkbox_)
        return QWidget::minimumSizeHint();
    return {checkbox_->minimumSizeHint().width() + kLinkSpacing + linkButton_->sizeHint().width(),
            checkbox_->minimumSizeHint().height()};
}

int TSRConsentToggle::heightForWidth(int width) const {
    if (!checkbox_)
        return QWidget::heightForWidth(width);
    const ConsentLayout layout(checkbox_, linkButton_, width);
    return std::max(layout.checkboxHeight, layout.linkSize.height());
}

void TSRConsentToggle::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!checkbox_)
        return;
    const ConsentLayout layout(checkbox_, linkButton_, width());
    checkbox_->setGeometry(0, 0, layout.checkboxWidth, height());
    const QFontMetrics linkMetrics(linkButton_->font());
    const int linkBaseline = (layout.linkSize.height() - linkMetrics.height()) / 2 + linkMetrics.ascent();
    const int linkWidth = std::min(layout.linkSize.width(), width() - layout.checkboxWidth - kLinkSpacing);
    linkButton_->setGeometry(layout.checkboxWidth + kLinkSpacing, checkbox_->firstBaseline() - linkBaseline,
                             std::max(0, linkWidth), layout.linkSize.height());
}

} // namespace tessara
