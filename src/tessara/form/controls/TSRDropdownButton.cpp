#include "tessara/form/controls/TSRDropdownButton.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/InputDecoration.h"
#include "tessara/ui/Glyphs.h"
#include "tessara/ui/MenuStyle.h"
#include "tessara/platform/FatalError.h"

#include <QActionGroup>
#include <QEvent>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

namespace tessara {

namespace {
constexpr int kArrowsInset = 5;
constexpr int kTextPadding = 12;

// Forwards focus changes of the main button to the field, whose frame shows the focus.
class FocusRepainter : public QObject {
public:
    FocusRepainter(QWidget* field, QObject* parent)
        : QObject(parent)
        , field_(field) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            field_->update();
        return false;
    }

private:
    QWidget* field_;
};
} // namespace

TSRDropdownButton::TSRDropdownButton(QWidget* parent)
    : TSRInputField(parent) {}

TSRDropdownButton::~TSRDropdownButton() = default;

void TSRDropdownButton::setup() {
    TSRInputField::setup();
    const QString identifier = accessibilityIdentifier();
    TSRAppearance& theme = currentAppearance();
    setReadOnly(true);
    setCursor(Qt::PointingHandCursor);

    arrowsButton_ = new QToolButton(this);
    arrowsButton_->setObjectName(identifier + QStringLiteral(".arrowsButton"));
    arrowsButton_->setAccessibleName(arrowsButton_->objectName());
    arrowsButton_->setAttribute(Qt::WA_TransparentForMouseEvents);
    arrowsButton_->setFocusPolicy(Qt::NoFocus);
    arrowsButton_->setIconSize(QSize(18, 18));
    arrowsButton_->setIcon(glyphIcon(Glyph::chevronUpChevronDown, QSize(18, 18), Qt::white));
    arrowsButton_->setProperty("tint", theme.tintColor());

    mainButton_ = new QPushButton(this);
    mainButton_->setObjectName(identifier + QStringLiteral(".mainButton"));
    mainButton_->setAccessibleName(mainButton_->objectName());
    mainButton_->setFlat(true);
    mainButton_->setCursor(Qt::PointingHandCursor);
    mainButton_->setStyleSheet(QStringLiteral("QPushButton{background:transparent;border:none;}"));
    mainButton_->installEventFilter(new FocusRepainter(this, mainButton_));
    // The field itself never takes the keyboard: focus goes to the button over it.
    setFocusProxy(mainButton_);
    connect(mainButton_, &QPushButton::clicked, this, &TSRDropdownButton::openMenu);

    menu_ = new QMenu(this);
    menu_->setObjectName(identifier + QStringLiteral(".menu"));
    applyMenuStyle(menu_);
    actionGroup_ = new QActionGroup(menu_);
    actionGroup_->setExclusive(true);
    for (const FieldOption& option : field->options.value_or(std::vector<FieldOption>{})) {
        // An option without a label shows its value rather than an empty row.
        QAction* action = menu_->addAction(option.label.value_or(option.value));
        action->setCheckable(true);
        action->setData(option.value);
        actionGroup_->addAction(action);
        connect(action, &QAction::triggered, this, [this, option] { choose(option); });
    }
    placeButtons();
}

void TSRDropdownButton::openMenu() {
    if (!menu_ || menu_->actions().isEmpty())
        return;
    menu_->setMinimumWidth(width());
    menu_->popup(mapToGlobal(QPoint(0, height() + 4)));
}

void TSRDropdownButton::choose(const FieldOption& option) {
    for (QAction* action : actionGroup_->actions()) {
        if (action->data().toString() == option.value) {
            action->setChecked(true);
            break;
        }
    }
    markCheckedActions(menu_);
    setText(option.label.value_or(QString()));
    setCursorPosition(0);
    value = option.value;
    announceValue();
}

std::optional<ControlValidationError> TSRDropdownButton::validate(bool allowEmpty) {
    using Kind = ControlValidationError::Kind;
    // A chosen value is the option's own text: nothing to trim.
    if (!value || value->isEmpty()) {
        if (allowEmpty)
            return std::nullopt;
        return ControlValidationError{Kind::fieldValueIsEmpty, this};
    }
    // A document that offers nothing to choose from cannot hold a choice.
    if (!field->options || field->options->empty())
        fatalError(QStringLiteral("The dropdown %1 holds a value but its field has no options.")
                       .arg(accessibilityIdentifier()));
    const auto& options = *field->options;
    const bool known = std::any_of(options.begin(), options.end(),
                                   [this](const FieldOption& option) { return option.value == *value; });
    if (!known)
        return ControlValidationError{Kind::fieldValueInvalid, this};
    return std::nullopt;
}

void TSRDropdownButton::resizeEvent(QResizeEvent* event) {
    TSRInputField::resizeEvent(event);
    placeButtons();
}

void TSRDropdownButton::placeButtons() {
    if (!arrowsButton_)
        return;
    const int side = std::max(0, height() - 2 * kArrowsInset);
    arrowsButton_->setGeometry(width() - kArrowsInset - side, kArrowsInset, side, side);
    // The chevron's corners follow the field's, inset by the gap between them.
    const InputDecoration* decoration = InputDecoration::of(this);
    const double fieldRadius = decoration ? decoration->cornerRadius() : 0.0;
    const double radius = std::clamp(fieldRadius - kArrowsInset, 0.0, side / 2.0);
    const QColor tint = arrowsButton_->property("tint").value<QColor>();
    const QString sheet = QStringLiteral("QToolButton{background-color:%1;border:none;border-radius:%2px;}")
                              .arg(tint.name(QColor::HexArgb))
                              .arg(radius, 0, 'f', 1);
    if (arrowsButton_->styleSheet() != sheet)
        arrowsButton_->setStyleSheet(sheet);
    mainButton_->setGeometry(rect());
    mainButton_->raise();
    setTextMargins(kTextPadding, 0, kTextPadding + side + kArrowsInset, 0);
}

} // namespace tessara
