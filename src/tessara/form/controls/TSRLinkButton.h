#pragma once

#include "tessara/form/TSRControl.h"

#include <QPushButton>
#include <QUrl>

namespace tessara {

// A link (LINK): a text button that asks the screen (TSRLinkOpener) to open the field's
// value as a URL; a value without scheme is taken as https.
class TSRLinkButton : public QPushButton, public TSRControl {
    Q_OBJECT
public:
    explicit TSRLinkButton(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }

    // The URL a value opens: the value parsed leniently, with "https" when it has no scheme.
    // Absent when the value does not parse.
    static std::optional<QUrl> urlFromValue(const std::optional<QString>& value);

private:
    void linkAction();
};

} // namespace tessara
