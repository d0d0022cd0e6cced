#include "host/BankHomeScreen.h"

#include "host/AccountCard.h"
#include "host/BrandPalette.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessara::demo {

namespace {

QLabel* label(const QString& text, const QFont& font, const QColor& colour, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    l->setFont(font);
    QPalette pal = l->palette();
    pal.setColor(QPalette::WindowText, colour);
    l->setPalette(pal);
    return l;
}

// A white rounded panel, the building block of the home screen.
QWidget* panel(QWidget* parent) {
    auto* w = new QWidget(parent);
    w->setObjectName(QStringLiteral("panel"));
    w->setAttribute(Qt::WA_StyledBackground);
    w->setStyleSheet(
        QStringLiteral("#panel{background:%1;border-radius:16px;}").arg(BrandPalette::surface().name()));
    return w;
}

// A round badge with a short symbol, standing in for an icon.
QLabel* badge(const QString& symbol, const QColor& fill, const QColor& ink, int size, QWidget* parent) {
    auto* b = new QLabel(symbol, parent);
    b->setFixedSize(size, size);
    b->setAlignment(Qt::AlignCenter);
    b->setFont(BrandPalette::font(size / 3.2, QFont::Bold));
    b->setStyleSheet(QStringLiteral("background:%1;color:%2;border-radius:%3px;")
                         .arg(fill.name(QColor::HexArgb), ink.name())
                         .arg(size / 2));
    return b;
}

} // namespace

BankHomeScreen::BankHomeScreen(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("BankHomeScreen"));
    setFixedSize(kWidth, kHeight);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    auto* column = new QVBoxLayout;
    column->setContentsMargins(16, 20, 16, 16);
    column->setSpacing(16);
    column->addWidget(makeHeader());
    column->addWidget(new AccountCard(this));
    column->addWidget(makeQuickActions());
    column->addWidget(makeOffer());
    column->addWidget(makeRecentPayments());
    outer->addLayout(column);
    outer->addStretch(1);
    outer->addWidget(makeTabBar());
}

void BankHomeScreen::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), BrandPalette::background());
}

QWidget* BankHomeScreen::makeHeader() {
    auto* header = new QWidget(this);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(4, 0, 4, 0);
    row->setSpacing(12);
    row->addWidget(badge(QStringLiteral("МИ"), BrandPalette::primary(), Qt::white, 44, header));
    auto* names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(
        label(QStringLiteral("Добър ден,"), BrandPalette::font(10), BrandPalette::secondaryText(), header));
    names->addWidget(label(QStringLiteral("Мария Иванова"), BrandPalette::font(14, QFont::Bold),
                           BrandPalette::text(), header));
    row->addLayout(names, 1);
    row->addWidget(label(QString::fromUtf8(BrandPalette::kBankName), BrandPalette::font(10, QFont::DemiBold),
                         BrandPalette::primary(), header),
                   0, Qt::AlignVCenter);
    return header;
}

QWidget* BankHomeScreen::makeQuickActions() {
    auto* box = panel(this);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(12, 14, 12, 12);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    const struct {
        const char* symbol;
        const char* title;
    } actions[] = {{"⇄", "Преводи"}, {"▤", "Плащания"}, {"▭", "Карти"}, {"%", "Спестявания"}};
    int column = 0;
    for (const auto& action : actions) {
        QColor tint = BrandPalette::primary();
        tint.setAlpha(28);
        grid->addWidget(badge(QString::fromUtf8(action.symbol), tint, BrandPalette::primary(), 46, box), 0,
                        column, Qt::AlignHCenter);
        auto* title =
            label(QString::fromUtf8(action.title), BrandPalette::font(8.5), BrandPalette::text(), box);
        title->setAlignment(Qt::AlignHCenter);
        grid->addWidget(title, 1, column, Qt::AlignHCenter);
        ++column;
    }
    return box;
}

QWidget* BankHomeScreen::makeOffer() {
    auto* box = panel(this);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(18, 18, 18, 18);
    column->setSpacing(6);
    auto* top = new QHBoxLayout;
    top->setSpacing(12);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(label(QStringLiteral("Потребителски кредит"), BrandPalette::font(13, QFont::Bold),
                           BrandPalette::text(), box));
    auto* pitch = label(QStringLiteral("До 50 000 лв. с решение онлайн за минути, без посещение в клон."),
                        BrandPalette::font(9.5), BrandPalette::secondaryText(), box);
    pitch->setWordWrap(true);
    texts->addWidget(pitch);
    top->addLayout(texts, 1);
    top->addWidget(badge(QStringLiteral("лв"), BrandPalette::accent(), Qt::white, 48, box), 0, Qt::AlignTop);
    column->addLayout(top);
    column->addSpacing(10);

    startButton_ = new QPushButton(QStringLiteral("Кандидатствай за кредит"), box);
    startButton_->setObjectName(QStringLiteral("startCreditRequestButton"));
    startButton_->setCursor(Qt::PointingHandCursor);
    startButton_->setMinimumHeight(50);
    startButton_->setFont(BrandPalette::font(11, QFont::DemiBold));
    startButton_->setStyleSheet(
        QStringLiteral("QPushButton{background:%1;color:white;border:none;border-radius:12px;padding:0 16px;}"
                       "QPushButton:pressed{background:%2;}"
                       "QPushButton:disabled{background:%3;}")
            .arg(BrandPalette::primary().name(), BrandPalette::primaryDark().name(),
                 BrandPalette::secondaryText().name()));
    connect(startButton_, &QPushButton::clicked, this, &BankHomeScreen::startRequested);
    column->addWidget(startButton_);
    return box;
}

QWidget* BankHomeScreen::makeRecentPayments() {
    auto* box = panel(this);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(18, 16, 18, 12);
    column->setSpacing(10);
    column->addWidget(label(QStringLiteral("Последни движения"), BrandPalette::font(11, QFont::DemiBold),
                            BrandPalette::text(), box));
    const struct {
        const char* title;
        const char* when;
        const char* amount;
        bool incoming;
    } payments[] = {{"Заплата", "вчера", "+2 350,00 лв.", true},
                    {"Кафе „Зорница“", "вчера", "−4,60 лв.", false},
                    {"Електроенергия", "18 ноем.", "−86,12 лв.", false}};
    for (const auto& payment : payments) {
        auto* row = new QHBoxLayout;
        row->setSpacing(12);
        QColor tint = payment.incoming ? BrandPalette::positive() : BrandPalette::secondaryText();
        tint.setAlpha(30);
        row->addWidget(badge(payment.incoming ? QStringLiteral("↓") : QStringLiteral("↑"), tint,
                             payment.incoming ? BrandPalette::positive() : BrandPalette::secondaryText(), 34,
                             box));
        auto* texts = new QVBoxLayout;
        texts->setSpacing(0);
        texts->addWidget(
            label(QString::fromUtf8(payment.title), BrandPalette::font(10), BrandPalette::text(), box));
        texts->addWidget(label(QString::fromUtf8(payment.when), BrandPalette::font(8.5),
                               BrandPalette::secondaryText(), box));
        row->addLayout(texts, 1);
        row->addWidget(label(QString::fromUtf8(payment.amount), BrandPalette::font(10, QFont::DemiBold),
                             payment.incoming ? BrandPalette::positive() : BrandPalette::text(), box));
        column->addLayout(row);
    }
    return box;
}

QWidget* BankHomeScreen::makeTabBar() {
    auto* bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("tabBar"));
    bar->setAttribute(Qt::WA_StyledBackground);
    bar->setStyleSheet(QStringLiteral("#tabBar{background:%1;border-top:1px solid #DDE3E1;}")
                           .arg(BrandPalette::surface().name()));
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(8, 8, 8, 14);
    const struct {
        const char* symbol;
        const char* title;
    } tabs[] = {{"⌂", "Начало"}, {"⇄", "Плащания"}, {"%", "Кредити"}, {"☰", "Още"}};
    bool first = true;
    for (const auto& tab : tabs) {
        // The first tab is the one on screen.
        const QColor ink = first ? BrandPalette::primary() : BrandPalette::secondaryText();
        auto* item = new QVBoxLayout;
        item->setSpacing(2);
        auto* glyph = label(QString::fromUtf8(tab.symbol), BrandPalette::font(15), ink, bar);
        glyph->setAlignment(Qt::AlignHCenter);
        auto* title = label(QString::fromUtf8(tab.title),
                            BrandPalette::font(8, first ? QFont::DemiBold : QFont::Normal), ink, bar);
        title->setAlignment(Qt::AlignHCenter);
        item->addWidget(glyph);
        item->addWidget(title);
        row->addLayout(item, 1);
        first = false;
    }
    return bar;
}

void BankHomeScreen::setBusy(bool busy) {
    startButton_->setEnabled(!busy);
}

void BankHomeScreen::closedFormOnStepWithId(const QString& directionId) {
    Q_EMIT closedOnStep(directionId);
}

} // namespace tessara::demo
