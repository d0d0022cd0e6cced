#pragma once

#include <QWidget>

class QPlainTextEdit;

namespace tessara::demo {

// The side panel that lists, with the time, every SDK callback and step the demo saw.
class CallbackLogPanel : public QWidget {
    Q_OBJECT
public:
    explicit CallbackLogPanel(QWidget* parent = nullptr);

    void append(const QString& line);
    QString text() const;

private:
    QPlainTextEdit* view_ = nullptr;
};

} // namespace tessara::demo
