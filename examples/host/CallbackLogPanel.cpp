#include "host/CallbackLogPanel.h"

#include "host/BrandPalette.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTime>
#include <QVBoxLayout>

namespace tessara::demo {

CallbackLogPanel::CallbackLogPanel(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("callbackLogPanel"));
    setMinimumWidth(420);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);

    auto* title = new QLabel(QStringLiteral("SDK callbacks and steps"), this);
    title->setFont(BrandPalette::font(11, QFont::DemiBold));
    title->setStyleSheet(QStringLiteral("color:#E8ECEB;"));
    column->addWidget(title);

    view_ = new QPlainTextEdit(this);
    view_->setObjectName(QStringLiteral("callbackLog"));
    view_->setReadOnly(true);
    view_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    QFont mono(QStringLiteral("DejaVu Sans Mono"));
    mono.setPointSizeF(8.5);
    view_->setFont(mono);
    view_->setStyleSheet(
        QStringLiteral("QPlainTextEdit{background:#1E2725;color:#D7E2DF;border:1px solid #34403D;"
                       "border-radius:10px;padding:8px;}"));
    column->addWidget(view_, 1);
}

void CallbackLogPanel::append(const QString& line) {
    view_->appendPlainText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz")) +
                           QStringLiteral("  ") + line);
    view_->verticalScrollBar()->setValue(view_->verticalScrollBar()->maximum());
}

QString CallbackLogPanel::text() const {
    return view_->toPlainText();
}

} // namespace tessara::demo
