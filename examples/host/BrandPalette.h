#pragma once

#include <QColor>
#include <QFont>

namespace tessara::demo {

// The look of the demo bank, shared by the home screen and the theme it hands to the SDK so
// the process screens feel part of the same app.
struct BrandPalette {
    static QColor primary() { return QColor(0x0F, 0x6C, 0x5C); } // deep teal
    static QColor primaryDark() { return QColor(0x0A, 0x4A, 0x45); }
    static QColor accent() { return QColor(0xF2, 0xA9, 0x3B); } // warm amber
    static QColor background() { return QColor(0xF4, 0xF6, 0xF5); }
    static QColor surface() { return QColor(0xFF, 0xFF, 0xFF); }
    static QColor text() { return QColor(0x1B, 0x25, 0x23); }
    static QColor secondaryText() { return QColor(0x6B, 0x77, 0x74); }
    static QColor positive() { return QColor(0x1E, 0x8E, 0x3E); }

    static QFont font(qreal pointSize, QFont::Weight weight = QFont::Normal) {
        QFont f(QStringLiteral("DejaVu Sans"));
        f.setPointSizeF(pointSize);
        f.setWeight(weight);
        return f;
    }

    static constexpr const char* kBankName = "Ведра Банк";
};

} // namespace tessara::demo
