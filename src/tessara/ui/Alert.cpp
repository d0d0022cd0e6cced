#include "tessara/ui/Alert.h"

#include "tessara/ui/Hairline.h"

#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>

namespace tessara {

namespace {

constexpr qreal kCornerRadius = 14;
constexpr int kButtonHeight = 44;
const QColor kDestructive(0xff, 0x3b, 0x30);
const QColor kDimming(0, 0, 0, 72);

QString buttonStyle(const QColor& text, bool dark) {
    const QString pressed = dark ? QStringLiteral("rgba(255,255,255,30)") : QStringLiteral("rgba(0,0,0,20)");
    return QStringLiteral("QPushButton { border: none; background: transparent; padding: 0 8px; color: %1; }"
                          "QPushButton:pressed { background: %2; }")
        .arg(text.name(QColor::HexArgb), pressed);
}

} // namespace

Alert::Alert(QWidget* parent, const QString& title, const QString& message, std::vector<AlertAction> actions,
             const QColor& tint)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("alert"));
    setAttribute(Qt::WA_DeleteOnClose);
    // The card is painted with rounded corners; what lies outside them must stay see-through.
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);

    const bool dark = isDark();
    const QColor textColor = dark ? QColor(Qt::white) : QColor(Qt::black);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    auto* texts = new QVBoxLayout;
    texts->setContentsMargins(16, 19, 16, 19);
    texts->setSpacing(4);
    title_ = new QLabel(title, this);
    title_->setObjectName(QStringLiteral("alertTitle"));
    message_ = new QLabel(message, this);
    message_->setObjectName(QStringLiteral("alertMessage"));
    QFont titleFont = font();
    titleFont.setPixelSize(17);
    titleFont.setBold(true);
    title_->setFont(titleFont);
    QFont messageFont = font();
    messageFont.setPixelSize(13);
    message_->setFont(messageFont);
    for (QLabel* label : {title_, message_}) {
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        QPalette pal = label->palette();
        pal.setColor(QPalette::WindowText, textColor);
        label->setPalette(pal);
        texts->addWidget(label);
    }
    title_->setVisible(!title.isEmpty());
    message_->setVisible(!message.isEmpty());
    layout->addLayout(texts);

    addButtons(std::move(actions), tint);

    setFixedSize(kWidth, layout->totalHeightForWidth(kWidth));
}

Alert::~Alert() {
    delete dim_.data();
}

void Alert::addButtons(std::vector<AlertAction> actions, const QColor& tint) {
    const bool dark = isDark();
    sideBySide_ = actions.size() == 2;
    QBoxLayout* row = sideBySide_ ? static_cast<QBoxLayout*>(new QHBoxLayout) : new QVBoxLayout;
    row->setSpacing(0);
    // Room for the hairline above the buttons, which paintEvent draws.
    row->setContentsMargins(0, 1, 0, 0);
    static_cast<QBoxLayout*>(layout())->addLayout(row);

    for (auto& action : actions) {
        auto* button = new QPushButton(action.title, this);
        button->setObjectName(action.objectName);
        button->setFixedHeight(kButtonHeight);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setCursor(Qt::PointingHandCursor);
        button->setAutoDefault(false);
        QFont f = button->font();
        f.setPixelSize(17);
        f.setBold(action.preferred);
        button->setFont(f);
        button->setStyleSheet(
            buttonStyle(action.style == AlertAction::Style::destructive ? kDestructive : tint, dark));
        if (action.preferred) {
            button->setDefault(true);
            default_ = button;
        }
        if (action.style == AlertAction::Style::cancel)
            escape_ = button;
        row->addWidget(button, 1);
        buttons_.append(button);

        connect(button, &QPushButton::clicked, this, [this, handler = std::move(action.handler)] {
            // Closed first, as the handler may tear down the alert's parent. done() rather than
            // close(): a close event would come back through reject().
            const auto run = handler;
            done(QDialog::Accepted);
            if (run)
                run();
        });
    }
    if (!escape_ && buttons_.size() == 1)
        escape_ = buttons_.front();
}

bool Alert::isDark() const {
    // The parent's palette carries a light or dark look forced on the screens.
    const QPalette p = parentWidget() ? parentWidget()->palette() : palette();
    return p.color(QPalette::Window).lightness() < p.color(QPalette::WindowText).lightness();
}

QString Alert::text() const {
    return title_->text();
}

QString Alert::informativeText() const {
    return message_->text();
}

QList<QAbstractButton*> Alert::buttons() const {
    return buttons_;
}

QAbstractButton* Alert::defaultButton() const {
    return default_;
}

void Alert::reject() {
    // Escape presses the cancel action, so its handler runs; with no such action it does nothing.
    if (escape_)
        escape_->click();
}

void Alert::paintEvent(QPaintEvent*) {
    const bool dark = isDark();
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath card;
    card.addRoundedRect(QRectF(rect()), kCornerRadius, kCornerRadius);
    p.fillPath(card, dark ? QColor(0x2c, 0x2c, 0x2e) : QColor(Qt::white));

    const qreal line = hairlineWidth(this);
    const QColor separator = dark ? QColor(0x54, 0x54, 0x58, 0x99) : QColor(0x3c, 0x3c, 0x43, 0x49);
    p.setRenderHint(QPainter::Antialiasing, false);
    if (buttons_.isEmpty())
        return;
    const QRect first = buttons_.front()->geometry();
    p.fillRect(QRectF(0, first.top() - line, width(), line), separator);
    for (int i = 1; i < buttons_.size(); ++i) {
        const QRect g = buttons_[i]->geometry();
        if (sideBySide_)
            p.fillRect(QRectF(g.left() - line / 2, g.top(), line, g.height()), separator);
        else
            p.fillRect(QRectF(0, g.top() - line / 2, width(), line), separator);
    }
}

void Alert::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QWidget* host = parentWidget() ? parentWidget()->window() : nullptr;
    if (!host)
        return;
    if (!dim_) {
        dim_ = new QWidget(host);
        dim_->setObjectName(QStringLiteral("alertDimming"));
        dim_->setAutoFillBackground(true);
        QPalette pal = dim_->palette();
        pal.setColor(QPalette::Window, kDimming);
        dim_->setPalette(pal);
        host->installEventFilter(this);
    }
    dim_->setGeometry(host->rect());
    dim_->raise();
    dim_->show();
    const QRect area = host->geometry();
    move(area.center() - QPoint(width() / 2, height() / 2));
}

void Alert::hideEvent(QHideEvent* event) {
    if (dim_)
        dim_->hide();
    QDialog::hideEvent(event);
}

bool Alert::eventFilter(QObject* watched, QEvent* event) {
    if (dim_ && watched == dim_->parentWidget()) {
        if (event->type() == QEvent::Resize)
            dim_->setGeometry(dim_->parentWidget()->rect());
        if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
            move(dim_->parentWidget()->geometry().center() - QPoint(width() / 2, height() / 2));
    }
    return QDialog::eventFilter(watched, event);
}

Alert* showAlert(QWidget* parent, const QString& title, const QString& message,
                 std::vector<AlertAction> actions, const QColor& tint) {
    auto* alert = new Alert(parent, title, message, std::move(actions), tint); // deletes itself on close
    alert->open();
    return alert;
}

} // namespace tessara
