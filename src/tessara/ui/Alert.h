#pragma once

#include <QColor>
#include <QDialog>
#include <QList>
#include <QPointer>
#include <QString>
#include <functional>
#include <vector>

class QAbstractButton;
class QLabel;
class QPushButton;

namespace tessara {

struct AlertAction {
    enum class Style { normal, cancel, destructive };

    QString title;
    QString objectName;
    Style style = Style::normal;
    bool preferred = false;
    std::function<void()> handler; // may be empty: the action only closes the alert
};

// A phone-style alert: a rounded card centred over the dimmed window of its parent, bold
// centred title, centred message and full-width buttons (side by side for two actions,
// stacked otherwise). Window-modal but not blocking: it is opened, never exec'd. Each button
// carries its action's objectName so tests and the autopilot can press it; the alert's own
// objectName is "alert". It deletes itself when closed. Main thread only.
class Alert : public QDialog {
    Q_OBJECT
public:
    static constexpr int kWidth = 270;

    Alert(QWidget* parent, const QString& title, const QString& message, std::vector<AlertAction> actions,
          const QColor& tint);
    ~Alert() override;

    QString text() const;
    QString informativeText() const;
    // In the order of the actions given.
    QList<QAbstractButton*> buttons() const;
    // The preferred action's button (pressed by Return), if any.
    QAbstractButton* defaultButton() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void reject() override;

private:
    void addButtons(std::vector<AlertAction> actions, const QColor& tint);
    bool isDark() const;

    QLabel* title_ = nullptr;
    QLabel* message_ = nullptr;
    QList<QAbstractButton*> buttons_;
    QAbstractButton* default_ = nullptr;
    QAbstractButton* escape_ = nullptr; // what Escape presses: the cancel action, or a lone action
    bool sideBySide_ = false;
    // Dims the parent's window while the alert is up; a child of that window.
    QPointer<QWidget> dim_;
};

// Opens an alert (see Alert) and returns it; `tint` colours the text of every button except
// a destructive one, which is red. Main thread only.
Alert* showAlert(QWidget* parent, const QString& title, const QString& message,
                 std::vector<AlertAction> actions, const QColor& tint);

} // namespace tessara
