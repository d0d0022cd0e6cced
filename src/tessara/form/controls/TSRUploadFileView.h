#pragma once

#include "tessara/backend/TSRFile.h"
#include "tessara/form/TSRValidateable.h"

#include <QMimeType>
#include <QWidget>
#include <vector>

class QAction;
class QLabel;
class QMenu;
class QPushButton;

namespace tessara {

// A file to upload (UPLOAD_FILE): a title, the chosen file's name and a "Choose file…" button
// whose menu asks the screen (TSRFileUploader) for a file or a photo. The upload itself
// happens when the step is submitted.
class TSRUploadFileView : public QWidget, public TSRValidateable {
    Q_OBJECT
public:
    explicit TSRUploadFileView(QWidget* parent = nullptr);
    ~TSRUploadFileView() override;

    QLabel* titleLabel = nullptr;
    QLabel* filenameLabel = nullptr;
    QPushButton* chooseFileButton = nullptr;
    // The field's allowed extensions as content types (unknown extensions are left out).
    std::vector<QMimeType> allowedFileTypes;
    std::optional<TSRFile> fileToUpload;

    void setup() override;
    QWidget* widget() override { return this; }
    bool hasValue() const override;
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    // Takes `file` as the one to upload and shows its name. Main thread.
    void acceptFile(const TSRFile& file);

    // The button's menu and its two entries ("Other File", "Photo Library").
    QMenu* chooseFileMenu() const { return menu_; }
    QAction* openFileBrowserAction();
    QAction* openPhotoPickerAction();
    // True when one of the allowed types is an image, so photos may be picked.
    bool allowsPhotos() const;

private:
    QMenu* menu_ = nullptr;
    QAction* openFileBrowserAction_ = nullptr;
    QAction* openPhotoPickerAction_ = nullptr;
};

} // namespace tessara
