#include "tessara/form/controls/TSRRadioButtonView.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/form/controls/TSRRadioButton.h"

#include <QButtonGroup>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

namespace tessara {

namespace {
constexpr int kHeaderBottomSpacing = 4;
} // namespace

TSRRadioButtonView::TSRRadioButtonView(QWidget* parent)
    : QWidget(parent) {
    // As tall as its rows: the list never scrolls inside the form.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TSRRadioButtonView::setup() {
    applyAccessibilityIdentifier();
    TSRAppearance& theme = currentAppearance();
    const QString identifier = accessibilityIdentifier();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    headerLabel_ = new QLabel(field->label.value_or(QString()), this);
    headerLabel_->setObjectName(identifier + QStringLiteral(".header"));
    headerLabel_->setWordWrap(true);
    QFont headerFont = theme.font();
    headerFont.setWeight(QFont::DemiBold);
    headerLabel_->setFont(headerFont);
    QPalette headerPalette = headerLabel_->palette();
    headerPalette.setColor(QPalette::WindowText, theme.textColor());
    headerLabel_->setPalette(headerPalette);
    headerLabel_->setVisible(!headerLabel_->text().isEmpty());
    layout->addWidget(headerLabel_);
    layout->addSpacing(kHeaderBottomSpacing);

    group_ = new QButtonGroup(this);
    group_->setExclusive(true);
    for (const FieldOption& option : field->options.value_or(std::vector<FieldOption>{})) {
        auto* button = new TSRRadioButton(this);
        button->setObjectName(QStringLiteral("TSRRadioButton.%1.%2").arg(key(), option.value));
        button->setAccessibleName(button->objectName());
        button->setFont(theme.font());
        QPalette p = button->palette();
        p.setColor(QPalette::WindowText, theme.textColor());
        p.setColor(QPalette::Highlight, theme.tintColor());
        button->setPalette(p);
        button->setFieldOption(option);
        group_->addButton(button);
        radioButtons_.push_back(button);
        layout->addWidget(button);
        connect(button, &QAbstractButton::clicked, this, [this, button] { didSelect(button); });
    }
}

void TSRRadioButtonView::didSelect(TSRRadioButton* button) {
    value = button->fieldOption->value;
    announceValue();
}

bool TSRRadioButtonView::hasValue() const {
    return value.has_value();
}

std::optional<ControlValidationError> TSRRadioButtonView::validate(bool allowEmpty) {
    using Kind = ControlValidationError::Kind;
    if (!value) {
        if (allowEmpty)
            return std::nullopt;
        return ControlValidationError{Kind::fieldValueIsEmpty, this};
    }
    const auto options = field->options.value_or(std::vector<FieldOption>{});
    const bool known = std::any_of(options.begin(), options.end(),
                                   [this](const FieldOption& option) { return option.value == *value; });
    if (!known)
        return ControlValidationError{Kind::fieldValueInvalid, this};
    return std::nullopt;
}

} // namespace tessara
