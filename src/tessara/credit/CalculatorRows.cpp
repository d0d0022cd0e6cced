#include "tessara/credit/CalculatorRows.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/credit/FloatSlider.h"
#include "tessara/credit/TSRCreditCalculatorController.h"
#include "tessara/ui/ActivityIndicator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace tessara {

namespace {
constexpr int kValuePixelSize = 20;
const QString kPrefix = QStringLiteral("TSRCreditCalculatorController.");

void setTextColor(QLabel* label, const QColor& color) {
    QPalette p = label->palette();
    p.setColor(QPalette::WindowText, color);
    label->setPalette(p);
}
} // namespace

ActivityIndicator* CalculatorRows::spinner() {
    auto* spinner = new ActivityIndicator(ActivityIndicator::Style::large);
    spinner->setObjectName(kPrefix + QStringLiteral("spinner"));
    spinner->setColor(currentAppearance().tintColor());
    spinner->startAnimating();
    return spinner;
}

QLabel* CalculatorRows::valueLabel(const QString& role, const QString& text, Qt::Alignment alignment) {
    auto* label = new QLabel(text);
    label->setObjectName(kPrefix + role);
    QFont font = currentAppearance().font();
    font.setPixelSize(kValuePixelSize);
    // Digits of one width keep a value from jittering while a slider moves it.
    font.setStyleHint(QFont::System, QFont::PreferDefault);
    label->setFont(font);
    setTextColor(label, currentAppearance().tintColor());
    label->setAlignment(alignment | Qt::AlignVCenter);
    label->setWordWrap(false);
    if (alignment & Qt::AlignRight)
        label->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Preferred);
    return label;
}

QLabel* CalculatorRows::titleLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setFont(currentAppearance().font());
    setTextColor(label, currentAppearance().textColor());
    label->setWordWrap(false);
    return label;
}

FloatSlider* CalculatorRows::slider(const QString& role) {
    auto* slider = new FloatSlider;
    slider->setObjectName(kPrefix + role);
    slider->setAccessibleName(slider->objectName());
    slider->applyTint(currentAppearance().tintColor());
    return slider;
}

QWidget* CalculatorRows::column(QLabel* value, FloatSlider* slider) {
    auto* row = new QWidget;
    auto* layout = new QVBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(TSRCreditCalculatorController::SPACING_IN_ELEMENTS);
    layout->addWidget(value);
    layout->addWidget(slider);
    return row;
}

QWidget* CalculatorRows::line(const QString& title, QLabel* value) {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(TSRCreditCalculatorController::SPACING_IN_ELEMENTS);
    QLabel* titleLabel = this->titleLabel(title);
    titleLabel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    // Both sit on one baseline although the value is larger.
    layout->addWidget(titleLabel, 0, Qt::AlignBottom);
    layout->addWidget(value, 1, Qt::AlignBottom);
    return row;
}

QWidget* CalculatorRows::dateLine(const QString& title, QWidget* button) {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(TSRCreditCalculatorController::SPACING_IN_ELEMENTS);
    QLabel* titleLabel = this->titleLabel(title);
    titleLabel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    layout->addWidget(titleLabel, 1);
    layout->addWidget(button, 0);
    return row;
}

} // namespace tessara
