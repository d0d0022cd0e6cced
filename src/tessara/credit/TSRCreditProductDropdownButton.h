#pragma once

#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/FieldJSON.h"

#include <QLineEdit>
#include <optional>
#include <vector>

class QActionGroup;
class QMenu;
class QPushButton;
class QToolButton;

namespace tessara {

// The calculator's choice of credit product: a field that shows the chosen product's name,
// under a transparent button that opens a single-choice menu of the products. It submits
// nothing: every choice is posted on the notification bus under productNotificationName()
// with the entry "value" (the productId as text), which the calculator observes.
// Main thread only.
class TSRCreditProductDropdownButton : public QLineEdit {
    Q_OBJECT
public:
    // Text shown while no product name matches the preset: one zero-width space.
    static const QChar kEmptyText;

    explicit TSRCreditProductDropdownButton(QWidget* parent = nullptr);
    ~TSRCreditProductDropdownButton() override;

    // The "CHOOSE_PRODUCT" field; set before setup().
    std::optional<FieldJSON> field;
    // The chosen productId as decimal text; absent until a choice or a preset.
    std::optional<QString> value;
    bool addToStackView = true;
    // The calculator's products, in menu order; set before setup().
    std::vector<CreditProductJSON> products;

    // Builds the look, the arrows, the menu and the button over the field. The text starts
    // as the name of the product whose name equals the field's value; the product whose id
    // equals it is ticked and posted at once. Fatal without a field or key.
    void setup();

    // "<framework bundle identifier>.<field key>".
    QString productNotificationName() const;
    // Posts `value`; fatal when absent.
    void postValue();

    QToolButton* arrowsButton() const { return arrowsButton_; }
    QPushButton* mainButton() const { return mainButton_; }
    QMenu* menu() const { return menu_; }
    // Opens the menu under the field (what a tap on the main button does).
    void openMenu();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QString identifier() const;
    void choose(QAction* action, const CreditProductJSON& product);
    void placeButtons();

    QToolButton* arrowsButton_ = nullptr;
    QPushButton* mainButton_ = nullptr;
    QMenu* menu_ = nullptr;
    QActionGroup* actions_ = nullptr;
};

} // namespace tessara
