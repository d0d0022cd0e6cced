#pragma once

#include <QColor>
#include <QString>

namespace tessara {

// A colour as style-sheet text, alpha included ("rgba(0,122,255,0.200)").
QString cssColor(const QColor& color);

} // namespace tessara
