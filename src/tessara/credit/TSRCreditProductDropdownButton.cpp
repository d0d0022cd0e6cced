#include "tessara/credit/TSRCreditProductDropdownButton.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/MainThread.h"
#include "tessara/platform/NotificationBus.h"
#include "tessara/ui/CssColor.h"
#include "tessara/ui/Glyphs.h"
#include "tessara/ui/InputDecoration.h"
#include "tessara/ui/MenuStyle.h"

#include <QActionGroup>
#include <QEvent>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

namespace tessara {

namespace {
constexpr int kHeight = 48;
constexpr int kTextPadding = 12;
// The arrows' own square, before it is moved in and grown as the field asks.
constexpr int kArrowsSide = 26;
constexpr double kArrowsShift = -5.5;
constexpr int kArrowsGrowth = 3;
constexpr int kPresetDelayMs = 10;
} // namespace

const QChar TSRCreditProductDropdownButton::kEmptyText(0x200B);

TSRCreditProductDropdownButton::TSRCreditProductDropdownButton(QWidget* parent)
    : QLineEdit(parent) {}

TSRCreditProductDropdownButton::~TSRCreditProductDropdownButton() = default;

QString TSRCreditProductDropdownButton::identifier() const {
    if (!field || !field->key)
        fatalError(QStringLiteral("The credit product dropdown has no field key."));
    return QStringLiteral("TSRCreditProductDropdownButton.") + *field->key;
}

QString TSRCreditProductDropdownButton::productNotificationName() const {
    if (!field || !field->key)
        fatalError(QStringLiteral("The credit product dropdown has no field key."));
    return NotificationBus::frameworkName(*field->key);
}

void TSRCreditProductDropdownButton::postValue() {
    if (!value)
        fatalError(QStringLiteral("The credit product dropdown posted without a value."));
    NotificationBus::instance().post(productNotificationName(), {{QStringLiteral("value"), *value}});
}

void TSRCreditProductDropdownButton::setup() {
    const QString name = identifier();
    setObjectName(name);
    setAccessibleName(name);
    setPlaceholderText(field->label.value_or(QString()));
    setReadOnly(true);
    setMinimumHeight(kHeight);
    setFocusPolicy(Qt::NoFocus);
    InputDecoration::apply(this);
    InputDecoration::applyTextStyle(this);
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) { value = text; });

    TSRAppearance& theme = currentAppearance();
    arrowsButton_ = new QToolButton(this);
    arrowsButton_->setObjectName(name + QStringLiteral(".arrowsButton"));
    arrowsButton_->setAccessibleName(arrowsButton_->objectName());
    arrowsButton_->setAttribute(Qt::WA_TransparentForMouseEvents);
    arrowsButton_->setFocusPolicy(Qt::NoFocus);
    arrowsButton_->setIconSize(QSize(16, 16));
    arrowsButton_->setIcon(glyphIcon(Glyph::chevronUpChevronDown, QSize(16, 16), Qt::white));
    arrowsButton_->setProperty("tint", theme.tintColor());

    menu_ = new QMenu(this);
    menu_->setObjectName(name + QStringLiteral(".menu"));
    applyMenuStyle(menu_);
    actions_ = new QActionGroup(menu_);
    actions_->setExclusive(true);
    const QString preset = field->value.value_or(QString());
    bool presetPosted = false;
    for (const CreditProductJSON& product : products) {
        const QString id = QString::number(product.productId);
        QAction* action = menu_->addAction(product.productName);
        action->setObjectName(name + QLatin1Char('.') + id);
        action->setCheckable(true);
        actions_->addAction(action);
        connect(action, &QAction::triggered, this, [this, action, product] { choose(action, product); });
        // The preset ticks by identifier; only the first match counts in a single choice.
        if (field->value && id == preset && !presetPosted) {
            presetPosted = true;
            action->setChecked(true);
            value = id;
            postValue();
        }
    }
    markCheckedActions(menu_);

    mainButton_ = new QPushButton(this);
    mainButton_->setObjectName(name + QStringLiteral(".mainButton"));
    mainButton_->setAccessibleName(mainButton_->objectName());
    mainButton_->setFlat(true);
    mainButton_->setCursor(Qt::PointingHandCursor);
    mainButton_->setStyleSheet(QStringLiteral("QPushButton{background:transparent;border:none;}"));
    connect(mainButton_, &QPushButton::clicked, this, &TSRCreditProductDropdownButton::openMenu);

    // The text is matched by name, unlike the tick; it is set last.
    const auto named = std::find_if(products.begin(), products.end(), [&](const CreditProductJSON& p) {
        return field->value && p.productName == preset;
    });
    setText(named != products.end() ? named->productName : QString(kEmptyText));
    setCursorPosition(0);
    placeButtons();
}

void TSRCreditProductDropdownButton::openMenu() {
    if (!menu_ || menu_->actions().isEmpty())
        return;
    menu_->setMinimumWidth(width());
    menu_->popup(mapToGlobal(QPoint(0, height() + 4)));
}

void TSRCreditProductDropdownButton::choose(QAction* action, const CreditProductJSON& product) {
    action->setChecked(true);
    markCheckedActions(menu_);
    setText(action->text());
    setCursorPosition(0);
    value = QString::number(product.productId);
    postValue();
}

bool TSRCreditProductDropdownButton::event(QEvent* event) {
    // Whoever observes the choice subscribes after adding the control; a preset is told
    // again shortly after the control lands in its parent, so that observer hears it.
    if (event->type() == QEvent::ParentChange && parentWidget() && value) {
        QPointer<TSRCreditProductDropdownButton> self(this);
        runOnMainAfter(kPresetDelayMs, this, [self] {
            if (self && self->value)
                self->postValue();
        });
    }
    return QLineEdit::event(event);
}

void TSRCreditProductDropdownButton::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    placeButtons();
}

void TSRCreditProductDropdownButton::placeButtons() {
    if (!arrowsButton_)
        return;
    // The platform's right-view square, shifted in from the edge and grown on every side.
    const int side = kArrowsSide + 2 * kArrowsGrowth;
    const int x = int(width() - kArrowsSide + kArrowsShift - kArrowsGrowth - kTextPadding / 2);
    arrowsButton_->setGeometry(x, (height() - side) / 2, side, side);

    TSRAppearance& theme = currentAppearance();
    double radius = 0.0;
    if (theme.inputBorderStyle() == TSRAppearance::InputBorderStyle::none) {
        radius = theme.internalTextFieldCornerRadius() ? theme.inputCornerRadius() - 3.0 : 5.0;
        if (radius <= 0.0)
            radius = side / 2.0;
    }
    const QColor tint = arrowsButton_->property("tint").value<QColor>();
    const QString sheet = QStringLiteral("QToolButton{background-color:%1;border:none;border-radius:%2px;}")
                              .arg(cssColor(tint))
                              .arg(std::min(radius, side / 2.0), 0, 'f', 1);
    if (arrowsButton_->styleSheet() != sheet)
        arrowsButton_->setStyleSheet(sheet);
    mainButton_->setGeometry(rect());
    mainButton_->raise();
    setTextMargins(kTextPadding, 0, width() - x + 4, 0);
}

} // namespace tessara
