#pragma once

#include <QColor>
#include <QPointer>
#include <QWidget>

class QLabel;

namespace tessara {

// The bar on top of a navigation screen: the visible screen's title, centred in the
// theme's navigationTitleFont, its right bar item at the trailing edge, and a hairline
// along the bottom. Colours come from the theme, resolved for the style forced on the bar's
// navigation screen (or the application's), when the bar is made, when the application palette
// changes and when restyle() is called. Main thread only.
class TSRNavigationBar : public QWidget {
    Q_OBJECT
public:
    static constexpr int kHeight = 44;
    static constexpr int kSideMargin = 16;

    explicit TSRNavigationBar(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    QString title() const { return title_; }
    QLabel* titleLabel() const { return titleLabel_; }

    // Shows `item` (reparented into the bar) at the trailing edge; null shows none. The
    // item shown before is hidden and left to its owner.
    void setRightItem(QWidget* item);
    QWidget* rightItem() const { return rightItem_; }

    // Takes the theme's colours again, for the style now in effect.
    void restyle() { applyTheme(); }
    QColor backgroundColor() const { return background_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void applyTheme();
    void layoutItems();

    QLabel* titleLabel_ = nullptr; // child
    QString title_;
    QPointer<QWidget> rightItem_;
    QColor background_;
    QColor hairline_;
    bool applyingTheme_ = false; // our own palette change must not restyle again
};

} // namespace tessara
