// Choosing the file of an upload field.

#include "tessara/form/FilePicker.h"

#include "FormTestSupport.h"
#include "tessara/form/controls/TSRUploadFileView.h"

#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QMimeDatabase>
#include <QTemporaryDir>

using namespace tessara;
using namespace tessara::test;

namespace {

std::vector<QMimeType> typesOf(std::initializer_list<const char*> names) {
    std::vector<QMimeType> types;
    for (const char* name : names)
        types.push_back(QMimeDatabase().mimeTypeForName(QLatin1String(name)));
    return types;
}

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& data) {
    const QString path = dir.filePath(name);
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(data);
    return path;
}

} // namespace

TEST(FilePicker, NameFilterOffersTheAllowedTypes) {
    const auto allowed = typesOf({"application/pdf", "image/jpeg"});
    const QString documents = FilePicker::nameFilter(FilePicker::Source::documents, allowed);
    EXPECT_TRUE(documents.contains(QLatin1String("*.pdf")));
    EXPECT_TRUE(documents.contains(QLatin1String("*.jpg")));
    EXPECT_TRUE(documents.contains(QLatin1String("*.jpeg")));

    const QString photos = FilePicker::nameFilter(FilePicker::Source::photos, allowed);
    EXPECT_TRUE(photos.contains(QLatin1String("*.jpg")));
    EXPECT_FALSE(photos.contains(QLatin1String("*.pdf")));

    EXPECT_TRUE(FilePicker::nameFilter(FilePicker::Source::documents, {}).endsWith(QLatin1String("(*)")));
    EXPECT_TRUE(FilePicker::nameFilter(FilePicker::Source::photos, typesOf({"application/pdf"}))
                    .contains(QLatin1String("*.png")));
}

TEST(FilePicker, ReadsNameTypeAndBytes) {
    QTemporaryDir dir;
    const auto scan = FilePicker::readFile(writeFile(dir, QStringLiteral("скан 1.pdf"), "%PDF-1.7 data"));
    ASSERT_TRUE(scan.has_value());
    EXPECT_EQ(scan->filename, QStringLiteral("скан 1.pdf"));
    EXPECT_EQ(scan->type.name(), QStringLiteral("application/pdf"));
    EXPECT_EQ(scan->data, "%PDF-1.7 data");
    EXPECT_TRUE(scan->filenameAlreadyHasExtension);

    // A name without suffix lets the upload add the type's own.
    const auto bare = FilePicker::readFile(writeFile(dir, QStringLiteral("scan"), "%PDF-1.7 data"));
    ASSERT_TRUE(bare.has_value());
    EXPECT_EQ(bare->type.name(), QStringLiteral("application/pdf"));
    EXPECT_FALSE(bare->filenameAlreadyHasExtension);

    EXPECT_FALSE(FilePicker::readFile(dir.filePath(QStringLiteral("missing.pdf"))).has_value());
}

TEST(FilePicker, ChoosingAFileHandsItToTheFieldThatAsked) {
    QTemporaryDir dir;
    const QString path =
        writeFile(dir, QStringLiteral("снимка.png"), QByteArray::fromHex("89504e470d0a1a0a"));
    FormScreen screen(decodeStep(R"({"type":"FORM","directionId":"d","fields":[
        {"type":"UPLOAD_FILE","key":"photo","label":"Снимка","allowedExt":["png","pdf"],"maxSize":1}]})"));
    auto* upload = screen.find<TSRUploadFileView>(QStringLiteral("TSRUploadFileView.photo"));
    ASSERT_NE(upload, nullptr);

    for (auto [action, dialogName] : {std::pair{upload->openPhotoPickerAction(), "FilePicker.photos"},
                                      std::pair{upload->openFileBrowserAction(), "FilePicker.documents"}}) {
        upload->fileToUpload.reset();
        action->trigger();
        // The chooser does not block: the call has returned and the dialog waits for the user.
        auto* dialog = screen.form()->findChild<QFileDialog*>(QString::fromLatin1(dialogName));
        ASSERT_NE(dialog, nullptr) << dialogName;
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(dialog->fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(screen.form()->uploadFileView(), upload);

        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, "accept"); // what the Open button does
        ASSERT_TRUE(upload->fileToUpload.has_value()) << dialogName;
        EXPECT_EQ(upload->fileToUpload->filename, QStringLiteral("снимка.png"));
        EXPECT_EQ(upload->fileToUpload->type.name(), QStringLiteral("image/png"));
        EXPECT_EQ(upload->fileToUpload->data.size(), 8);
        EXPECT_EQ(upload->filenameLabel->text(), QStringLiteral("снимка.png"));
        settle(20);
    }
}
