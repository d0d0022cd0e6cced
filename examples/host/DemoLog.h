#pragma once

#include <QObject>
#include <QStringList>

namespace tessara::demo {

// The demo's running account: every SDK callback and every step shown, one line each. Lines go
// to standard output (what a terminal user and scripts read) and to the window's log panel.
// Main thread only.
class DemoLog : public QObject {
    Q_OBJECT
public:
    explicit DemoLog(QObject* parent = nullptr);

    // Off in tests, which read lines() instead.
    void setEchoToStdout(bool echo) { echo_ = echo; }

    void line(const QString& text);
    const QStringList& lines() const { return lines_; }

Q_SIGNALS:
    void lineAdded(const QString& text);

private:
    QStringList lines_;
    bool echo_ = true;
};

} // namespace tessara::demo
