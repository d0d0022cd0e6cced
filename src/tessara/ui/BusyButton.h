#pragma once

#include <QPushButton>

namespace tessara {

class ActivityIndicator;

// A push button that can show a spinner in place of its title while work runs
// (the "shows activity indicator" state of a configured button).
class BusyButton : public QPushButton {
    Q_OBJECT
public:
    explicit BusyButton(QWidget* parent = nullptr);
    explicit BusyButton(const QString& title, QWidget* parent = nullptr);
    ~BusyButton() override;

    void setShowsActivityIndicator(bool shows);
    bool showsActivityIndicator() const { return showsActivityIndicator_; }
    ActivityIndicator* activityIndicator() const { return indicator_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeIndicator();

    ActivityIndicator* indicator_ = nullptr; // child widget, owned by this button
    bool showsActivityIndicator_ = false;
    QString savedTitle_;
};

} // namespace tessara
