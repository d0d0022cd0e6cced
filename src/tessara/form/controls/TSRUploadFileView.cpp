#include "tessara/form/controls/TSRUploadFileView.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/form/ParentResponders.h"
#include "tessara/form/TSRFileUploader.h"
#include "tessara/ui/Glyphs.h"
#include "tessara/ui/MenuStyle.h"
#include "tessara/platform/FatalError.h"

#include <QAction>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeDatabase>
#include <QPushButton>
#include <algorithm>

namespace tessara {

namespace {
constexpr int kSpacing = 8;
constexpr int kMenuIconSize = 18;
// "maxSize" counts units of 2^20 bytes; a count that needs more than 20 bits would
// overflow the 64-bit limit.
constexpr quint64 kMaximumSizeUnits = quint64(1) << 20;

std::vector<QMimeType> typesForExtensions(const std::vector<QString>& extensions) {
    const QMimeDatabase database;
    std::vector<QMimeType> types;
    for (QString extension : extensions) {
        extension = extension.trimmed();
        if (extension.startsWith(QLatin1Char('.')))
            extension.remove(0, 1);
        if (extension.isEmpty())
            continue;
        const QMimeType type =
            database.mimeTypeForFile(QStringLiteral("file.") + extension, QMimeDatabase::MatchExtension);
        // An unknown extension maps to the catch-all type, which no real file should match.
        if (!type.isValid() || type.isDefault())
            continue;
        if (std::find(types.begin(), types.end(), type) == types.end())
            types.push_back(type);
    }
    return types;
}

bool isImage(const QMimeType& type) {
    if (type.name().startsWith(QLatin1String("image/")))
        return true;
    const QStringList ancestors = type.allAncestors();
    return std::any_of(ancestors.begin(), ancestors.end(),
                       [](const QString& name) { return name.startsWith(QLatin1String("image/")); });
}
} // namespace

TSRUploadFileView::TSRUploadFileView(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

TSRUploadFileView::~TSRUploadFileView() = default;

void TSRUploadFileView::setup() {
    applyAccessibilityIdentifier();
    TSRAppearance& theme = currentAppearance();
    const QString identifier = accessibilityIdentifier();
    allowedFileTypes = typesForExtensions(field->allowedFileExtensions.value_or(std::vector<QString>{}));

    QPalette textPalette = palette();
    textPalette.setColor(QPalette::WindowText, theme.textColor());
    titleLabel = new QLabel(field->label.value_or(QString()), this);
    titleLabel->setObjectName(identifier + QStringLiteral(".titleLabel"));
    titleLabel->setFont(theme.font());
    titleLabel->setPalette(textPalette);
    titleLabel->setWordWrap(true);
    titleLabel->setAlignment(Qt::AlignLeading | Qt::AlignTop);

    filenameLabel = new QLabel(this);
    filenameLabel->setObjectName(identifier + QStringLiteral(".filenameLabel"));
    filenameLabel->setFont(theme.font());
    filenameLabel->setPalette(textPalette);
    filenameLabel->setWordWrap(true);
    filenameLabel->setVisible(false);

    const QColor tint = theme.tintColor();
    chooseFileButton = new QPushButton(QStringLiteral("Choose file…"), this);
    chooseFileButton->setObjectName(identifier + QStringLiteral(".chooseFileButton"));
    chooseFileButton->setAccessibleName(chooseFileButton->objectName());
    chooseFileButton->setFont(theme.font());
    chooseFileButton->setCursor(Qt::PointingHandCursor);
    chooseFileButton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    chooseFileButton->setStyleSheet(
        QStringLiteral("QPushButton{color:%1;background:transparent;border:none;"
                       "padding:0px;}"
                       "QPushButton:pressed{color:%2;}"
                       "QPushButton:focus{text-decoration:underline;}")
            .arg(tint.name(QColor::HexArgb), tint.darker(140).name(QColor::HexArgb)));

    menu_ = new QMenu(this);
    menu_->setObjectName(identifier + QStringLiteral(".chooseFileMenu"));
    applyMenuStyle(menu_);
    // The file browser is always offered, also for a field without allowed types: the user
    // may pick any file and is told at submission that its type is not accepted.
    menu_->addAction(openFileBrowserAction());
    if (allowsPhotos())
        menu_->addAction(openPhotoPickerAction());
    connect(chooseFileButton, &QPushButton::clicked, this, [this] {
        menu_->popup(chooseFileButton->mapToGlobal(QPoint(0, chooseFileButton->height() + 4)));
    });

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kSpacing);
    grid->setVerticalSpacing(kSpacing);
    grid->addWidget(titleLabel, 0, 0);
    grid->addWidget(chooseFileButton, 0, 1, Qt::AlignRight | Qt::AlignTop);
    grid->addWidget(filenameLabel, 1, 0, 1, 2);
    grid->setColumnStretch(0, 1);
}

QAction* TSRUploadFileView::openFileBrowserAction() {
    if (!openFileBrowserAction_) {
        openFileBrowserAction_ = new QAction(QStringLiteral("Other File"), this);
        openFileBrowserAction_->setObjectName(QStringLiteral("openFileBrowserAction"));
        openFileBrowserAction_->setIcon(
            glyphIcon(Glyph::document, QSize(kMenuIconSize, kMenuIconSize), currentAppearance().tintColor()));
        connect(openFileBrowserAction_, &QAction::triggered, this, [this] {
            if (TSRFileUploader* uploader = firstResponder<TSRFileUploader>(this)) {
                uploader->setUploadFileView(this);
                uploader->openFileBrowser();
            }
        });
    }
    return openFileBrowserAction_;
}

QAction* TSRUploadFileView::openPhotoPickerAction() {
    if (!openPhotoPickerAction_) {
        openPhotoPickerAction_ = new QAction(QStringLiteral("Photo Library"), this);
        openPhotoPickerAction_->setObjectName(QStringLiteral("openPhotoPickerAction"));
        openPhotoPickerAction_->setIcon(
            glyphIcon(Glyph::photoOnRectangle, QSize(kMenuIconSize, kMenuIconSize),
                      currentAppearance().tintColor(), palette().color(QPalette::Base)));
        connect(openPhotoPickerAction_, &QAction::triggered, this, [this] {
            if (TSRFileUploader* uploader = firstResponder<TSRFileUploader>(this)) {
                uploader->setUploadFileView(this);
                uploader->openPhotoPicker();
            }
        });
    }
    return openPhotoPickerAction_;
}

bool TSRUploadFileView::allowsPhotos() const {
    return std::any_of(allowedFileTypes.begin(), allowedFileTypes.end(), isImage);
}

void TSRUploadFileView::acceptFile(const TSRFile& file) {
    fileToUpload = file;
    filenameLabel->setText(file.filename);
    filenameLabel->setVisible(!file.filename.isEmpty());
}

bool TSRUploadFileView::hasValue() const {
    return fileToUpload.has_value();
}

std::optional<ControlValidationError> TSRUploadFileView::validate(bool allowEmpty) {
    using Kind = ControlValidationError::Kind;
    if (!fileToUpload) {
        if (allowEmpty)
            return std::nullopt;
        return ControlValidationError{Kind::fieldValueIsEmpty, this};
    }
    // The very type, not a subtype of it: a field that allows text files refuses a CSV.
    const QMimeType& type = fileToUpload->type;
    const bool allowed = type.isValid() && std::find(allowedFileTypes.begin(), allowedFileTypes.end(),
                                                     type) != allowedFileTypes.end();
    if (!allowed)
        return ControlValidationError{Kind::fileWithUnsupportedExtension, this};
    if (!field->maximumFileSize)
        fatalError(QStringLiteral("The upload field %1 has no maximum file size.").arg(key()));
    const quint64 units = *field->maximumFileSize;
    if (units >= kMaximumSizeUnits)
        fatalError(QStringLiteral("The maximum file size %1 of the upload field %2 is too large.")
                       .arg(units)
                       .arg(key()));
    const quint64 limit = units << 20;
    const auto size = quint64(fileToUpload->data.size());
    if (size > 0 && size > limit)
        return ControlValidationError{Kind::fileTooBig, this};
    return std::nullopt;
}

} // namespace tessara
