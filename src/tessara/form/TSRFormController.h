#pragma once

#include "tessara/api/TSRViewController.h"
#include "tessara/documents/FieldValueDTO.h"
#include "tessara/form/PositionStyle.h"
#include "tessara/form/TSRFileUploader.h"
#include "tessara/form/TSRFlowFollower.h"
#include "tessara/form/TSRLinkFollower.h"
#include "tessara/form/TSRLinkOpener.h"
#include "tessara/form/TSRPopupOpener.h"

#include <QPointer>
#include <vector>

class QScrollArea;
class QVBoxLayout;

namespace tessara {

struct ControlValidationError;
class InputShield;
class KeyboardGuide;
class OverlayScrollBar;
class TSRControl;
class TSRUploadFileView;

// The screen of a form step: the step's fields as controls in one scrolling column, some
// pinned over the screen by their style, a close button, and the submission of the step
// when a flow button is pressed. Main thread only.
class TSRFormController : public TSRViewController,
                          public TSRFlowFollower,
                          public TSRLinkFollower,
                          public TSRLinkOpener,
                          public TSRPopupOpener,
                          public TSRFileUploader {
    Q_OBJECT
public:
    explicit TSRFormController(QWidget* parent = nullptr);
    ~TSRFormController() override;

    // Builds the screen from `ui` unless already built; showing the screen does it too.
    // Fatal when `ui` is not set.
    void loadViewIfNeeded();

    // The top-level controls in document order, including those a style pins over the
    // screen. Owned by the screen.
    const std::vector<TSRControl*>& formFields() const { return formFields_; }
    QScrollArea* scrollView() const { return scrollView_; }
    // The column inside the scroll view that holds the stacked controls.
    QWidget* stackView() const { return stackView_; }
    // The views pinned over the screen: styled controls and the closing screen's views.
    std::vector<QWidget*> positionedViews() const;

    // The leading and trailing space of the column: the theme's leadingSpace, 16 when unset.
    static int padding();

    // True while a step is on its way: the screen takes no input then.
    bool isLocked() const;
    // Whether the user has entered anything worth a confirmation before closing.
    bool holdsEnteredData() const;

    // The close button's action: closes at once, or after the user confirms when data
    // would be lost.
    void closeHandler();

    // Validates and submits the step toward `directionId` (see TSRFlowFollower).
    void followFlow(QWidget* button, const std::optional<QString>& directionId,
                    const std::optional<QString>& fromFlowFieldId) override;
    // Shows the step document that ships with the SDK under `directionId`; no request is made.
    void followLink(const std::optional<QString>& directionId, const std::optional<QString>& key) override;
    // Opens `url` outside the SDK.
    void openLink(const QUrl& url) override;
    // Shows the consent text of the control that carries `field` in an alert.
    void openPopup(const FieldJSON& field) override;

    TSRUploadFileView* uploadFileView() const override;
    void setUploadFileView(TSRUploadFileView* view) override;
    // Let the user pick an image (photo source) or any allowed file for uploadFileView().
    void openPhotoPicker() override;
    void openFileBrowser() override;

    // Builds the screen before it first appears, so its views appear with it.
    void setVisible(bool visible) override;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Positioned {
        QPointer<QWidget> view;
        std::vector<PositionStyle::Anchor> anchors;
    };

    void applyTheme();
    void buildContent();
    void position(TSRControl& control, const std::vector<PositionStyle::Anchor>& anchors);
    void pin(QWidget* view, const std::vector<PositionStyle::Anchor>& anchors);
    void buildClosingScreen(const FieldJSON& field, const QString& lowercasedStyle);
    void layoutViews();

    void showValidationAlert(const ControlValidationError& error);
    void sendStep(const QString& directionId, const std::optional<QString>& fromFlowFieldId,
                  std::vector<FieldValueDTO> fields);
    void reportClose();

    bool viewLoaded_ = false;
    QScrollArea* scrollView_ = nullptr;     // child
    OverlayScrollBar* scrollBar_ = nullptr; // child, over the scroll view's right edge
    QWidget* stackView_ = nullptr;          // owned by scrollView_
    QVBoxLayout* stackLayout_ = nullptr;
    std::vector<TSRControl*> formFields_;
    std::vector<Positioned> positioned_;
    InputShield* shield_ = nullptr;     // child
    KeyboardGuide* keyboard_ = nullptr; // child
    QPointer<TSRUploadFileView> uploadFileView_;
};

} // namespace tessara
