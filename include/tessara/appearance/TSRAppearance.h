#pragma once

#include "tessara/appearance/DynamicColor.h"

#include <QColor>
#include <QFont>
#include <cmath>
#include <limits>
#include <optional>

class QWidget;

namespace tessara {

/// The look of every SDK screen. The host makes one (std::make_shared, all defaults), hands
/// it to Tessara and may keep it and change it at any time: it is the one process-wide
/// theme (Tessara::appearance()), not a copy. Screens read it when they style a view, so a
/// change shows on views styled after it; nothing is restyled. Not-a-number in a length
/// means "unset". Main thread only.
class TSRAppearance {
public:
    /// How text inputs draw their frame. `none` lets the SDK draw corner radius, border
    /// and background from the input properties below.
    enum class InputBorderStyle { none = 0, line = 1, bezel = 2, roundedRect = 3 };
    /// Button height and padding: 28/8, 34/12, 46/16 (medium, the default), 52/20 pixels.
    enum class ButtonSize { mini, small, medium, large };
    /// Button corners: `capsule` rounds fully, `small`, `medium` and `large` use 6, 8 and 12
    /// pixels, `dynamic` (the default) and `fixed` the size's own radius.
    enum class ButtonCornerStyle { dynamic, fixed, capsule, large, medium, small };

    /// Every property at its default.
    TSRAppearance();
    /// A theme is shared, never copied: a copy would silently stop following the host's edits.
    ///@{
    TSRAppearance(const TSRAppearance&) = delete;
    TSRAppearance& operator=(const TSRAppearance&) = delete;
    ///@}

    /// Accent of buttons and controls (default: the system blue). Colours left at their default
    /// follow the light or dark style of the palette at the moment they are read; a colour the
    /// host sets is used as it is.
    ///@{
    QColor tintColor() const { return tintColor_.resolved(); }
    void setTintColor(const QColor& c) { tintColor_ = DynamicColor::fixed(c); }
    ///@}
    /// Screen background (default: white, or black in the dark style).
    ///@{
    QColor backgroundColor() const { return backgroundColor_.resolved(); }
    void setBackgroundColor(const QColor& c) { backgroundColor_ = DynamicColor::fixed(c); }
    ///@}
    /// Text (default: black, or white in the dark style).
    ///@{
    QColor textColor() const { return textColor_.resolved(); }
    void setTextColor(const QColor& c) { textColor_ = DynamicColor::fixed(c); }
    ///@}
    /// Body text (default: 17 pixels, normal weight).
    ///@{
    QFont font() const { return font_; }
    void setFont(const QFont& f) { font_ = f; }
    ///@}
    /// The navigation bar's title (default: 17 pixels, semibold).
    ///@{
    QFont navigationTitleFont() const { return navigationTitleFont_; }
    void setNavigationTitleFont(const QFont& f) { navigationTitleFont_ = f; }
    ///@}
    /// Whether form and verification screens offer a close button (default true).
    ///@{
    bool showCloseButton() const { return showCloseButton_; }
    void setShowCloseButton(bool show) { showCloseButton_ = show; }
    ///@}

    /// How text inputs draw their frame (default roundedRect).
    ///@{
    InputBorderStyle inputBorderStyle() const { return inputBorderStyle_; }
    void setInputBorderStyle(InputBorderStyle s) { inputBorderStyle_ = s; }
    ///@}
    /// Width of an input's border with InputBorderStyle::none (default 0: no border).
    ///@{
    double inputBorderWidth() const { return inputBorderWidth_; }
    void setInputBorderWidth(double w) { inputBorderWidth_ = w; }
    ///@}
    /// Border colour with InputBorderStyle::none; default white at 20 % in the dark style, black
    /// at 20 % otherwise.
    ///@{
    QColor inputBorderColor() const { return inputBorderColor_.resolved(); }
    void setInputBorderColor(const QColor& c) { inputBorderColor_ = DynamicColor::fixed(c); }
    ///@}
    /// An input's background with InputBorderStyle::none (default: the default background).
    ///@{
    QColor inputBackgroundColor() const { return inputBackgroundColor_.resolved(); }
    void setInputBackgroundColor(const QColor& c) { inputBackgroundColor_ = DynamicColor::fixed(c); }
    ///@}
    /// Input text. Lazy: the first read takes font() / textColor() as they stand then; a later
    /// change of those no longer reaches it. A textColor still at its default is taken as the
    /// default itself, so the input text keeps following the light or dark style.
    ///@{
    QFont inputFont();
    void setInputFont(const QFont& f) { inputFont_ = f; }
    QColor inputTextColor();
    void setInputTextColor(const QColor& c) { inputTextColor_ = DynamicColor::fixed(c); }
    ///@}

    /// The corner radius of inputs; absent by default (inputCornerRadius then gives 8).
    ///@{
    std::optional<double> internalTextFieldCornerRadius() const { return internalTextFieldCornerRadius_; }
    void setInternalTextFieldCornerRadius(std::optional<double> r) { internalTextFieldCornerRadius_ = r; }
    ///@}
    /// Kept for hosts that set it; no screen reads it.
    ///@{
    double internalTextAreaCornerRadius() const { return internalTextAreaCornerRadius_; }
    void setInternalTextAreaCornerRadius(double r) { internalTextAreaCornerRadius_ = r; }
    ///@}
    /// internalTextFieldCornerRadius when set, else 8.0 (reading does not store it).
    /// 0 means half the input's height.
    ///@{
    double inputCornerRadius() const { return internalTextFieldCornerRadius_.value_or(8.0); }
    void setInputCornerRadius(double r) { internalTextFieldCornerRadius_ = r; }
    ///@}

    /// Button titles; lazy, like inputFont and inputTextColor.
    ///@{
    QFont buttonFont();
    void setButtonFont(const QFont& f) { buttonFont_ = f; }
    QColor buttonTextColor();
    void setButtonTextColor(const QColor& c) { buttonTextColor_ = DynamicColor::fixed(c); }
    ///@}
    /// NaN (the default) adds no minimum height.
    ///@{
    double buttonMinimumHeight();
    void setButtonMinimumHeight(double h) { buttonMinimumHeight_ = h; }
    ///@}
    /// NaN (the default) gives a leading space of 16 in forms.
    ///@{
    double leadingSpace();
    void setLeadingSpace(double s) { leadingSpace_ = s; }
    ///@}
    /// The same storage as leadingSpace.
    ///@{
    double buttonLeadingSpace() { return leadingSpace(); }
    void setButtonLeadingSpace(double s) { setLeadingSpace(s); }
    ///@}
    /// Default: medium.
    ///@{
    ButtonSize buttonSize();
    void setButtonSize(ButtonSize s) { buttonSize_ = s; }
    ///@}
    /// Default: dynamic.
    ///@{
    ButtonCornerStyle buttonCornerStyle();
    void setButtonCornerStyle(ButtonCornerStyle s) { buttonCornerStyle_ = s; }
    ///@}
    /// NaN (the default) leaves buttonCornerStyle in charge.
    ///@{
    double buttonCornerRadius();
    void setButtonCornerRadius(double r) { buttonCornerRadius_ = r; }
    ///@}

    /// The consent's link (default: 16 pixels, normal weight).
    ///@{
    QFont consentLinkButtonFont() const { return consentLinkButtonFont_; }
    void setConsentLinkButtonFont(const QFont& f) { consentLinkButtonFont_ = f; }
    ///@}
    /// Whether the verification screen's instructions sit in a bubble (default false).
    ///@{
    bool embedInstructionsLabelInBubble();
    void setEmbedInstructionsLabelInBubble(bool embed) { embedInstructionsLabelInBubble_ = embed; }
    ///@}
    /// The bubble's colour; lazy; its default follows the light or dark style.
    ///@{
    QColor bubbleBackgroundColor();
    void setBubbleBackgroundColor(const QColor& c) { bubbleBackgroundColor_ = DynamicColor::fixed(c); }
    ///@}
    /// The bubble's corner radius (default 8).
    ///@{
    double bubbleCornerRadius();
    void setBubbleCornerRadius(double r) { bubbleCornerRadius_ = r; }
    ///@}

    /// True when colours resolve to their dark values: the style of the innermost StyleScope that
    /// forces one, otherwise whether the application palette is dark (window darker than text).
    static bool isDarkStyle();
    /// The same for what `widget` shows: the style forced on it or its nearest ancestor that has
    /// one (setInterfaceStyle), otherwise isDarkStyle().
    static bool isDarkStyle(const QWidget* widget);
    /// Forces `style` on `widget` and everything inside it; unspecified lifts it. Views already
    /// styled keep their look: the owner of the widget restyles what it drew.
    static void setInterfaceStyle(QWidget* widget, InterfaceStyle style);
    /// The style forced on `widget` or its nearest ancestor with one; unspecified when none.
    static InterfaceStyle interfaceStyle(const QWidget* widget);

    /// While it lives, theme colours read on this thread resolve for `style` whatever the
    /// application palette says (unspecified changes nothing). A view inside a forced style is
    /// styled within one, so the theme's defaults match what surrounds it. Scopes nest.
    class StyleScope {
    public:
        explicit StyleScope(InterfaceStyle style); ///< Forces `style` from now on.
        ~StyleScope();                             ///< Restores the style in force before.
        ///@{
        StyleScope(const StyleScope&) = delete;
        StyleScope& operator=(const StyleScope&) = delete;
        ///@}

    private:
        InterfaceStyle previous_;
    };
    /// NaN test shared by every reader of an optional length.
    static bool isSet(double length) { return !std::isnan(length); }

    /// Platform-like defaults, exposed so screens draw secondary elements consistently.
    ///@{
    static QColor systemBlue();
    static QColor separatorColor();
    static QColor placeholderTextColor();
    static QColor secondarySystemBackground();
    ///@}

private:
    DynamicColor tintColor_;
    DynamicColor backgroundColor_;
    DynamicColor textColor_;
    QFont font_;
    QFont navigationTitleFont_;
    bool showCloseButton_ = true;
    InputBorderStyle inputBorderStyle_ = InputBorderStyle::roundedRect;
    double inputBorderWidth_ = 0.0;
    DynamicColor inputBorderColor_;
    DynamicColor inputBackgroundColor_;
    std::optional<QFont> inputFont_;
    std::optional<DynamicColor> inputTextColor_;
    std::optional<double> internalTextFieldCornerRadius_;
    double internalTextAreaCornerRadius_ = 6.0;
    std::optional<QFont> buttonFont_;
    std::optional<DynamicColor> buttonTextColor_;
    std::optional<double> buttonMinimumHeight_;
    std::optional<double> leadingSpace_;
    std::optional<ButtonSize> buttonSize_;
    std::optional<ButtonCornerStyle> buttonCornerStyle_;
    std::optional<double> buttonCornerRadius_;
    QFont consentLinkButtonFont_;
    std::optional<bool> embedInstructionsLabelInBubble_;
    std::optional<DynamicColor> bubbleBackgroundColor_;
    std::optional<double> bubbleCornerRadius_;
};

} // namespace tessara
