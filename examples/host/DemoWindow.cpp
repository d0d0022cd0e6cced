#include "host/DemoWindow.h"

#include "host/BankHomeScreen.h"
#include "host/BrandPalette.h"
#include "host/CallbackLogPanel.h"
#include "host/PhoneFrame.h"

#include <QHBoxLayout>
#include <QPainter>

namespace tessara::demo {

DemoWindow::DemoWindow(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("DemoWindow"));
    setWindowTitle(QStringLiteral("Tessara demo — %1").arg(QString::fromUtf8(BrandPalette::kBankName)));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(24, 24, 24, 24);
    row->setSpacing(24);
    home_ = new BankHomeScreen(this);
    row->addWidget(new PhoneFrame(home_, this), 0, Qt::AlignTop);
    log_ = new CallbackLogPanel(this);
    row->addWidget(log_, 1);
    resize(BankHomeScreen::kWidth + 2 * PhoneFrame::kBezel + 48 + 24 + 460,
           BankHomeScreen::kHeight + 2 * PhoneFrame::kBezel + 48);
}

void DemoWindow::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), QColor(0x2A, 0x33, 0x31));
}

} // namespace tessara::demo
