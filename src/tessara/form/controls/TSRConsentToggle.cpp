#include "tessara/form/controls/TSRConsentToggle.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/form/ParentResponders.h"
#include "tessara/form/TSRLinkFollower.h"
#include "tessara/ui/Glyphs.h"
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
// Below the checkbox, the link tucks into the checkbox's bottom padding by this much.
constexpr int kLinkTuck = 8;
constexpr int kBottomPadding = 6;

// The link goes right after the checkbox, on its first baseline, while that leaves the
// checkbox at least half the width; otherwise (a long link or a narrow screen) it goes
// under the checkbox's title, so neither is squeezed into a column of cut words.
class ConsentLayout {
public:
    ConsentLayout(const TSRCheckbox* checkbox, const QPushButton* link, int width)
        : linkSize(link->sizeHint()) {
        const int natural = checkbox->sizeHint().width();
        const int available = width - linkSize.width() - kLinkSpacing;
        below = natural > available && available < width / 2;
        if (below) {
            checkboxWidth = std::max(1, width);
            checkboxHeight = checkbox->heightForWidth(checkboxWidth);
            linkTop = checkboxHeight - kLinkTuck;
            linkWidth = std::min(linkSize.width(), std::max(0, width - TSRCheckbox::titleIndent()));
            height = linkTop + linkSize.height() + kBottomPadding;
        } else {
            checkboxWidth = std::max(1, std::min(natural, available));
            checkboxHeight = checkbox->heightForWidth(checkboxWidth);
            linkWidth = std::min(linkSize.width(), std::max(0, width - checkboxWidth - kLinkSpacing));
            height = std::max(checkboxHeight, linkSize.height());
        }
    }
    QSize linkSize;
    bool below = false;
    int checkboxWidth = 0;
    int checkboxHeight = 0;
    int linkTop = 0; // only when below
    int linkWidth = 0;
    int height = 0;
};
} // namespace

TSRConsentToggle::TSRConsentToggle(QWidget* parent)
    : QWidget(parent) {
    // Not Fixed: a fixed height would be the one-line size hint and cut a wrapped title.
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

TSRConsentToggle::~TSRConsentToggle() {
    // Before ~QWidget destroys the checkbox, which may still announce to this toggle.
    NotificationBus::instance().unsubscribe(this);
}

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
    // A link that does not fit beside the checkbox goes under it, so it adds no width.
    return checkbox_->minimumSizeHint();
}

int TSRConsentToggle::heightForWidth(int width) const {
    if (!checkbox_)
        return QWidget::heightForWidth(width);
    return ConsentLayout(checkbox_, linkButton_, width).height;
}

void TSRConsentToggle::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!checkbox_)
        return;
    const ConsentLayout layout(checkbox_, linkButton_, width());
    if (layout.below) {
        checkbox_->setGeometry(0, 0, layout.checkboxWidth, layout.checkboxHeight);
        linkButton_->setGeometry(TSRCheckbox::titleIndent(), layout.linkTop, layout.linkWidth,
                                 layout.linkSize.height());
        return;
    }
    checkbox_->setGeometry(0, 0, layout.checkboxWidth, height());
    const QFontMetrics linkMetrics(linkButton_->font());
    const int linkBaseline = (layout.linkSize.height() - linkMetrics.height()) / 2 + linkMetrics.ascent();
    linkButton_->setGeometry(layout.checkboxWidth + kLinkSpacing, checkbox_->firstBaseline() - linkBaseline,
                             layout.linkWidth, layout.linkSize.height());
}

} // namespace tessara
