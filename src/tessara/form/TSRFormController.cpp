#include "tessara/form/TSRFormController.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionContainer.h"
#include "tessara/form/FieldGatherer.h"
#include "tessara/form/FilePicker.h"
#include "tessara/form/LocalStepDocument.h"
#include "tessara/form/PopupContent.h"
#include "tessara/form/TSRControlFactory.h"
#include "tessara/form/UploadChain.h"
#include "tessara/form/controls/TSRA1Button.h"
#include "tessara/form/controls/TSRA1ImageView.h"
#include "tessara/form/controls/TSRUploadFileView.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/HostHooks.h"
#include "tessara/steps/StepSubmission.h"
#include "tessara/ui/Alert.h"
#include "tessara/ui/BusyButton.h"
#include "tessara/ui/CloseConfirmation.h"
#include "tessara/ui/CloseGlyphButton.h"
#include "tessara/ui/InputShield.h"
#include "tessara/ui/KeyboardGuide.h"
#include "tessara/ui/OverlayScrollBar.h"

#include <QEvent>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tessara {

namespace {

constexpr int kSpacingBetweenElements = 24;
constexpr int kVerticalInset = 16;
constexpr int kDefaultPadding = 16;

void printLine(const QByteArray& text) {
    std::fwrite(text.constData(), 1, std::size_t(text.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

} // namespace

TSRFormController::TSRFormController(QWidget* parent)
    : TSRViewController(parent) {
    setObjectName(QStringLiteral("TSRFormController"));
}

TSRFormController::~TSRFormController() = default;

int TSRFormController::padding() {
    const double space = currentAppearance().leadingSpace();
    return TSRAppearance::isSet(space) ? int(std::lround(space)) : kDefaultPadding;
}

void TSRFormController::loadViewIfNeeded() {
    if (viewLoaded_)
        return;
    if (!ui)
        fatalError(QStringLiteral("A form screen was built without its step document."));
    viewLoaded_ = true;

    applyTheme();
    // The step's name is its title in the bar; a nameless step keeps an empty bar.
    if (ui->name && !ui->name->isEmpty())
        setNavigationTitle(*ui->name);
    buildContent();
    if (currentAppearance().showCloseButton()) {
        auto* close = new CloseGlyphButton; // owned by this screen through setRightBarItem
        close->setObjectName(QStringLiteral("TSRFormController.closeButton"));
        connect(close, &QAbstractButton::clicked, this, &TSRFormController::closeHandler);
        setRightBarItem(close);
    }
    keyboard_ = new KeyboardGuide(this, [this](int) { layoutViews(); });
    layoutViews();
}

void TSRFormController::applyTheme() {
    TSRAppearance& theme = currentAppearance();
    QPalette pal = palette();
    pal.setColor(QPalette::Highlight, theme.tintColor());
    pal.setColor(QPalette::Link, theme.tintColor());
    pal.setColor(QPalette::Window, theme.backgroundColor());
    setPalette(pal);
    setAutoFillBackground(true);
}

void TSRFormController::buildContent() {
    scrollView_ = new QScrollArea(this);
    scrollView_->setObjectName(QStringLiteral("TSRFormController.scrollView"));
    scrollView_->setFrameShape(QFrame::NoFrame);
    scrollView_->setWidgetResizable(true);
    scrollView_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollView_->viewport()->setAutoFillBackground(false);
    scrollBar_ = new OverlayScrollBar(scrollView_, this);

    stackView_ = new QWidget(scrollView_); // moves into the viewport at setWidget
    stackView_->setObjectName(QStringLiteral("TSRFormController.stackView"));
    stackView_->setAutoFillBackground(false);
    stackLayout_ = new QVBoxLayout(stackView_);
    stackLayout_->setSpacing(kSpacingBetweenElements);
    stackLayout_->setContentsMargins(padding(), kVerticalInset, padding(), kVerticalInset);
    // The column grows before its controls are laid out: otherwise a section that appears
    // squeezes every control to its minimum for one pass, until the scroll area catches up.
    stackLayout_->setSizeConstraint(QLayout::SetMinimumSize);

    formFields_ = TSRControlFactory::makeControls(ui->fields, stackView_);

    for (TSRControl* control : formFields_) {
        const FieldJSON& field = *control->field;
        if (field.styleClass) {
            const QString style = field.styleClass->toLower();
            position(*control, PositionStyle::pieces(style));
            if (style.contains(QLatin1String("a1")))
                buildClosingScreen(field, style);
        }
        if (field.notes)
            position(*control, PositionStyle::pieces(field.notes->toLower()));
    }

    for (TSRControl* control : formFields_) {
        if (control->addToStackView)
            stackLayout_->addWidget(control->widget());
    }
    // Extra height goes below the controls, so a short form keeps its rhythm at the top.
    stackLayout_->addStretch(1);
    scrollView_->setWidget(stackView_);

    shield_ = new InputShield(this);
}

void TSRFormController::position(TSRControl& control, const std::vector<PositionStyle::Anchor>& anchors) {
    if (anchors.empty())
        return;
    control.addToStackView = false;
    pin(control.widget(), anchors);
}

void TSRFormController::pin(QWidget* view, const std::vector<PositionStyle::Anchor>& anchors) {
    auto existing = std::ranges::find_if(positioned_, [view](const Positioned& p) { return p.view == view; });
    if (existing == positioned_.end()) {
        // Reparenting hides a widget; the document's hidden state must survive the move.
        const bool hidden = view->isHidden();
        view->setParent(this);
        view->setHidden(hidden);
        view->installEventFilter(this);
        positioned_.push_back({view, {}});
        existing = std::prev(positioned_.end());
    }
    existing->anchors.insert(existing->anchors.end(), anchors.begin(), anchors.end());
}

void TSRFormController::buildClosingScreen(const FieldJSON& field, const QString& lowercasedStyle) {
    auto* logo = new TSRA1ImageView(this);
    logo->field = field;
    logo->setup();
    logo->addToStackView = false;
    // The logo is decoration: taps and scrolling over it reach the form beneath.
    logo->setAttribute(Qt::WA_TransparentForMouseEvents);
    pin(logo, {lowercasedStyle.contains(QLatin1String("position-middle")) ? PositionStyle::Anchor::top
                                                                          : PositionStyle::Anchor::middle});

    auto* thanks = new TSRA1Button(QStringLiteral("Благодарим Ви"), this);
    thanks->addToStackView = false;
    connect(thanks, &QAbstractButton::clicked, this, &TSRFormController::closeHandler);
    pin(thanks, {PositionStyle::Anchor::bottom});
}

std::vector<QWidget*> TSRFormController::positionedViews() const {
    std::vector<QWidget*> views;
    for (const Positioned& p : positioned_) {
        if (p.view)
            views.push_back(p.view);
    }
    return views;
}

void TSRFormController::layoutViews() {
    if (!viewLoaded_)
        return;
    const int pad = padding();
    const int keyboard = keyboard_ ? keyboard_->bottomInset() : 0;
    scrollView_->setGeometry(0, 0, width(), std::max(0, height() - keyboard));
    scrollBar_->follow();

    // Content may scroll clear of views pinned to the top or bottom edge, so nothing in
    // the column stays out of reach beneath them.
    int coveredTop = 0;
    int coveredBottom = 0;
    const int innerWidth = std::max(0, width() - 2 * pad);
    for (const Positioned& p : positioned_) {
        if (!p.view)
            continue;
        QWidget* view = p.view;
        int preferred =
            view->hasHeightForWidth() ? view->heightForWidth(innerWidth) : view->sizeHint().height();
        preferred = std::max(preferred, view->minimumHeight());
        const QRect frame = PositionStyle::placement(p.anchors, rect(), pad, preferred);
        view->setGeometry(frame);
        view->raise();
        if (view->isHidden())
            continue;
        const bool top =
            std::ranges::all_of(p.anchors, [](auto a) { return a == PositionStyle::Anchor::top; });
        const bool bottom =
            std::ranges::all_of(p.anchors, [](auto a) { return a == PositionStyle::Anchor::bottom; });
        if (top)
            coveredTop = std::max(coveredTop, frame.bottom() + 1);
        if (bottom)
            coveredBottom = std::max(coveredBottom, height() - frame.top());
    }
    const QMargins margins(pad, coveredTop ? coveredTop + kSpacingBetweenElements : kVerticalInset, pad,
                           coveredBottom ? coveredBottom + kSpacingBetweenElements : kVerticalInset);
    if (stackLayout_->contentsMargins() != margins)
        stackLayout_->setContentsMargins(margins);
    if (shield_->isEngaged())
        shield_->raise();
}

void TSRFormController::setVisible(bool visible) {
    if (visible)
        loadViewIfNeeded();
    TSRViewController::setVisible(visible);
}

void TSRFormController::showEvent(QShowEvent* event) {
    TSRViewController::showEvent(event);
    layoutViews();
}

void TSRFormController::resizeEvent(QResizeEvent* event) {
    TSRViewController::resizeEvent(event);
    layoutViews();
}

bool TSRFormController::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::LayoutRequest:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        if (watched->isWidgetType() && static_cast<QWidget*>(watched)->parentWidget() == this)
            layoutViews();
        break;
    default:
        break;
    }
    return TSRViewController::eventFilter(watched, event);
}

bool TSRFormController::isLocked() const {
    return shield_ && shield_->isEngaged();
}

bool TSRFormController::holdsEnteredData() const {
    for (TSRValidateable* input : FieldGatherer::validateables(formFields_)) {
        if (FieldGatherer::isHidden(*input))
            continue;
        const FieldType type = input->type();
        // Toggles and dates hold a value without the user typing anything worth keeping.
        if (type == FieldType::checkbox || type == FieldType::consent || type == FieldType::date)
            continue;
        if (input->hasValue())
            return true;
    }
    return false;
}

void TSRFormController::closeHandler() {
    if (!holdsEnteredData()) {
        reportClose();
        return;
    }
    showCloseConfirmation(this, QStringLiteral("Сигурни ли сте, че искате да затворите формуляра?"),
                          [this] { reportClose(); });
}

void TSRFormController::reportClose() {
    dismissAndReportClose();
}

void TSRFormController::followFlow(QWidget* button, const std::optional<QString>& directionId,
                                   const std::optional<QString>& fromFlowFieldId) {
    if (!directionId)
        return;

    std::vector<FieldValueDTO> fields;
    // Going back to the step that led here keeps nothing of this one.
    const bool stepBack = previousDirectionId && *previousDirectionId == *directionId;
    if (!stepBack) {
        auto gathered = FieldGatherer::gather(FieldGatherer::validateables(formFields_), false);
        if (const auto* error = std::get_if<ControlValidationError>(&gathered)) {
            showValidationAlert(*error);
            return;
        }
        fields = std::get<std::vector<FieldValueDTO>>(std::move(gathered));
    }

    // Only the top-level upload fields travel; a file in a section is never sent.
    std::vector<QPointer<TSRUploadFileView>> uploads;
    for (TSRControl* control : formFields_) {
        if (auto* upload = dynamic_cast<TSRUploadFileView*>(control))
            uploads.emplace_back(upload);
    }

    shield_->engage(button);
    if (uploads.empty()) {
        sendStep(*directionId, fromFlowFieldId, std::move(fields));
        return;
    }
    if (!ui->submissionId)
        fatalError(QStringLiteral("The step has no submissionId to upload its files with."));
    UploadChain::run(std::move(uploads), *ui->submissionId, ui->directionId.value_or(QString()), this,
                     [this, direction = *directionId, fromFlowFieldId,
                      fields = std::move(fields)](bool allUploaded) mutable {
                         if (allUploaded)
                             sendStep(direction, fromFlowFieldId, std::move(fields));
                         else
                             shield_->release();
                     });
}

void TSRFormController::showValidationAlert(const ControlValidationError& error) {
    showAlert(
        this, error.alertTitle(), error.alertMessage(),
        {AlertAction{QStringLiteral("OK"), QStringLiteral("okAction"), AlertAction::Style::normal, true, {}}},
        currentAppearance().tintColor());
}

void TSRFormController::sendStep(const QString& directionId, const std::optional<QString>& fromFlowFieldId,
                                 std::vector<FieldValueDTO> fields) {
    if (!ui->submissionId)
        fatalError(QStringLiteral("The step has no submissionId to submit with."));
    const SubmitStepDTO dto{*ui->submissionId, directionId, ui->directionId, fromFlowFieldId,
                            std::move(fields)};

    // A failed step is dropped: the form simply takes input again.
    StepSubmission::send(*this, dto, [this](const std::optional<TSRError>&) { shield_->release(); });
}

void TSRFormController::followLink(const std::optional<QString>& directionId,
                                   const std::optional<QString>& key) {
    // The request this link stands for is only printed: a bundled step needs no backend.
    const SubmitStepDTO dto{ui ? ui->submissionId.value_or(QString()) : QString(),
                            directionId.value_or(QString()),
                            ui ? ui->directionId : std::nullopt,
                            key,
                            {}};
    if (auto encoded = encodeDocument(dto))
        printLine(*encoded);

    if (!directionId)
        return;
    const auto bytes = LocalStepDocument::load(*directionId);
    if (!bytes)
        return;
    printLine(*bytes);
    const auto container = decodeDocument<SubmissionContainer>(*bytes);
    if (!container)
        fatalError(QStringLiteral("The bundled step \"%1\" is not a valid step document.").arg(*directionId));
    transitionToStep(container->submission);
}

void TSRFormController::openLink(const QUrl& url) {
    HostHooks::instance().open(url);
}

void TSRFormController::openPopup(const FieldJSON& field) {
    const QString misconfigured = QStringLiteral("The form isn't configured properly.");
    if (!field.fieldId)
        fatalError(misconfigured);
    const auto carrier = std::ranges::find_if(formFields_, [&field](TSRControl* control) {
        return control->field && control->field->fieldId == field.fieldId;
    });
    if (carrier == formFields_.end() || !(*carrier)->field->consentContent)
        fatalError(misconfigured);

    const PopupContent content = PopupContent::make(field, *(*carrier)->field->consentContent);
    // The popup has nothing to cancel: its one action only closes it.
    showAlert(
        this, content.title, content.text,
        {AlertAction{QStringLiteral("OK"), QStringLiteral("okAction"), AlertAction::Style::normal, true, {}}},
        currentAppearance().tintColor());
}

TSRUploadFileView* TSRFormController::uploadFileView() const {
    return uploadFileView_;
}

void TSRFormController::setUploadFileView(TSRUploadFileView* view) {
    uploadFileView_ = view;
}

void TSRFormController::openPhotoPicker() {
    QPointer<TSRUploadFileView> view = uploadFileView_;
    if (!view)
        return;
    FilePicker::open(this, FilePicker::Source::photos, view->allowedFileTypes, [view](const TSRFile& file) {
        if (view)
            view->acceptFile(file);
    });
}

void TSRFormController::openFileBrowser() {
    QPointer<TSRUploadFileView> view = uploadFileView_;
    if (!view)
        return;
    FilePicker::open(this, FilePicker::Source::documents, view->allowedFileTypes,
                     [view](const TSRFile& file) {
                         if (view)
                             view->acceptFile(file);
                     });
}

} // namespace tessara
