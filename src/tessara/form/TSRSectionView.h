#pragma once

#include "tessara/form/TSRValidateable.h"

#include <QVariantMap>
#include <QWidget>
#include <optional>
#include <vector>

namespace tessara {

// A SECTION field: its own fields, stacked, shown or hidden as a whole by the visibility
// rule of its GROUP child. It holds no input of its own: its children are validated and
// submitted one by one by the form.
class TSRSectionView : public QWidget, public TSRValidateable {
    Q_OBJECT
public:
    explicit TSRSectionView(QWidget* parent = nullptr);
    ~TSRSectionView() override;

    // The GROUP child that carries this section's visibility rule, if any.
    std::optional<FieldJSON> group;
    // The child controls in document order; owned by this view as Qt children.
    std::vector<TSRControl*> formFields;

    // The first GROUP child with a condition whose sectionKey equals the section's key
    // (two absent keys are equal).
    static std::optional<FieldJSON> findGroup(const FieldJSON& section);

    void setup() override;
    QWidget* widget() override { return this; }
    // True when any child that holds input has a value.
    bool hasValue() const override;
    // Never fails: the children are checked one by one by the form.
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    // Applies the visibility rule to an announced value.
    void handleNotification(const QVariantMap& userInfo);
};

} // namespace tessara
