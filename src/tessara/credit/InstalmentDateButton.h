#pragma once

#include "tessara/ui/BusyButton.h"

#include <QDate>
#include <functional>
#include <optional>
#include <vector>

class QActionGroup;
class QMenu;

namespace tessara {

// The calculator's first-instalment date: a grey rounded button whose title is the date in
// the tint colour, which opens a single-choice menu of the available dates. Disabled, with a
// spinner, until the dates are in. Main thread only.
class InstalmentDateButton : public BusyButton {
    Q_OBJECT
public:
    explicit InstalmentDateButton(QWidget* parent = nullptr);

    // Spinner on, disabled: the dates are on their way.
    void showLoading();
    // The dates are in: spinner off, chevrons after the title, `title` shown, one menu item per
    // date titled by `format`, the item of `selected` ticked, enabled.
    void showDates(const std::vector<QDate>& dates, const std::optional<QDate>& selected,
                   const QString& title, const std::function<QString(const QDate&)>& format);
    void setTitle(const QString& title);

    QMenu* menu() const { return menu_; }
    // Opens the menu under the button (what a tap does).
    void openMenu();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void dateChosen(const QDate& date);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QMenu* menu_ = nullptr;
    QActionGroup* actions_ = nullptr;
    QString title_;
    bool showsChevrons_ = false;
};

} // namespace tessara
