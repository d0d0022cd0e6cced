#pragma once

namespace tessara {

class TSRUploadFileView;

// A narrow request a control makes of its screen. A control never holds its screen: it
// walks its parent chain (parentResponders) and uses the first object that implements
// the interface; with none, the action does nothing.
class TSRFileUploader {
public:
    virtual ~TSRFileUploader() = default;
    // The upload control that asked for a file.
    virtual TSRUploadFileView* uploadFileView() const = 0;
    virtual void setUploadFileView(TSRUploadFileView* view) = 0;
    virtual void openPhotoPicker() = 0;
    virtual void openFileBrowser() = 0;
};

} // namespace tessara
