#include "tessara/form/controls/TSRDatePicker.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/CssColor.h"
#include "tessara/ui/DisplayDate.h"

#include <QCalendarWidget>
#include <QDateEdit>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>

namespace tessara {

namespace {
constexpr int kHeight = 44;

// Tints the date editor's calendar just before it can first open (a press or a key).
class CalendarTint : public QObject {
public:
    CalendarTint(const QColor& tint, QDateEdit* edit)
        : QObject(edit)
        , tint_(tint) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        const QEvent::Type type = event->type();
        if (type == QEvent::MouseButtonPress || type == QEvent::KeyPress) {
            if (QCalendarWidget* calendar = static_cast<QDateEdit*>(watched)->calendarWidget()) {
                QPalette p = calendar->palette();
                p.setColor(QPalette::Highlight, tint_);
                calendar->setPalette(p);
            }
            watched->removeEventFilter(this);
        }
        return false;
    }

private:
    QColor tint_;
};

} // namespace

TSRDatePicker::TSRDatePicker(QWidget* parent)
    : QWidget(parent) {}

QString TSRDatePicker::dateFormat() {
    return QStringLiteral("yyyy-MM-dd");
}

void TSRDatePicker::setup() {
    applyAccessibilityIdentifier();
    TSRAppearance& theme = currentAppearance();

    label_ = new QLabel(field->label.value_or(QString()), this);
    label_->setObjectName(accessibilityIdentifier() + QStringLiteral(".label"));
    label_->setFont(theme.font());
    label_->setWordWrap(false);
    label_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    QPalette labelPalette = label_->palette();
    labelPalette.setColor(QPalette::WindowText, theme.textColor());
    label_->setPalette(labelPalette);

    datePicker_ = new QDateEdit(this);
    datePicker_->setObjectName(accessibilityIdentifier() + QStringLiteral(".datePicker"));
    datePicker_->setAccessibleName(datePicker_->objectName());
    datePicker_->setCalendarPopup(true);
    const QLocale locale; // the application's
    datePicker_->setLocale(locale);
    datePicker_->setDisplayFormat(displayDateFormat(locale));
    datePicker_->setFont(theme.font());
    datePicker_->setMinimumHeight(kHeight - 8);
    datePicker_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    const QColor pill = TSRAppearance::secondarySystemBackground();
    datePicker_->setStyleSheet(
        QStringLiteral("QDateEdit{background-color:%1;color:%2;border:none;"
                       "border-radius:8px;padding:4px 10px;}"
                       "QDateEdit:focus{color:%3;}"
                       "QDateEdit::drop-down{width:0;border:none;}")
            .arg(cssColor(pill), cssColor(theme.textColor()), cssColor(theme.tintColor())));
    // The calendar is made when the user first reaches for it: made up front it costs more
    // than the rest of the control together (a long form has many dates).
    datePicker_->installEventFilter(new CalendarTint(theme.tintColor(), datePicker_));

    // A date the user never touches still has to be submitted: it starts as the field's own
    // value when that is a date of the wire form, else today.
    QDate initial;
    if (field->value)
        initial = QDate::fromString(*field->value, dateFormat());
    if (!initial.isValid())
        initial = QDate::currentDate();
    datePicker_->setDate(initial);
    datePicked(datePicker_->date());
    connect(datePicker_, &QDateEdit::dateChanged, this, &TSRDatePicker::datePicked);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(label_, 1, Qt::AlignVCenter);
    row->addWidget(datePicker_, 0, Qt::AlignVCenter);
    setMinimumHeight(kHeight);
}

void TSRDatePicker::datePicked(const QDate& date) {
    value = date.toString(dateFormat());
}

bool TSRDatePicker::hasValue() const {
    return value.has_value();
}

std::optional<ControlValidationError> TSRDatePicker::validate(bool) {
    return std::nullopt;
}

} // namespace tessara
