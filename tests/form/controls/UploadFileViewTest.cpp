#include "ControlTestSupport.h"
#include "tessara/form/controls/TSRUploadFileView.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMimeDatabase>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace tessara;
using namespace tessara::test;
using Kind = ControlValidationError::Kind;

namespace {

FieldJSON uploadField(std::vector<QString> extensions, std::optional<quint64> maxSize) {
    FieldJSON field =
        makeField(FieldType::uploadFile, QStringLiteral("idScan"), QStringLiteral("Лична карта"));
    field.allowedFileExtensions = std::move(extensions);
    field.maximumFileSize = maxSize;
    field.fileExtensionError = QStringLiteral("Неподдържан формат");
    field.fileSizeError = QStringLiteral("Файлът е твърде голям");
    return field;
}

TSRFile fileOf(const char* mimeName, qsizetype size) {
    TSRFile file;
    file.type = QMimeDatabase().mimeTypeForName(QString::fromLatin1(mimeName));
    file.data = QByteArray(size, 'x');
    file.filename = QStringLiteral("scan");
    return file;
}

QStringList menuTitles(TSRUploadFileView* view) {
    QStringList titles;
    for (QAction* action : view->chooseFileMenu()->actions())
        titles << action->text();
    return titles;
}

} // namespace

TEST(UploadFileView, Validation) {
    struct Case {
        const char* name;
        std::vector<QString> extensions;
        const char* mime; // nullptr: no file chosen
        qsizetype size;
        bool allowEmpty;
        std::optional<Kind> expected;
    };
    const QString pdf = QStringLiteral("pdf");
    const QString jpg = QStringLiteral("jpg");
    const Case cases[] = {
        {"no file", {pdf}, nullptr, 0, false, Kind::fieldValueIsEmpty},
        {"no file, empty allowed", {pdf}, nullptr, 0, true, std::nullopt},
        {"exactly at the limit", {pdf}, "application/pdf", 2097152, false, std::nullopt},
        {"one byte over", {pdf}, "application/pdf", 2097153, false, Kind::fileTooBig},
        {"empty file", {pdf}, "application/pdf", 0, false, std::nullopt},
        {"other type", {pdf}, "image/png", 10, false, Kind::fileWithUnsupportedExtension},
        {"type before size", {pdf}, "image/png", 9999999, false, Kind::fileWithUnsupportedExtension},
        {"jpg allows jpeg", {jpg, pdf}, "image/jpeg", 10, false, std::nullopt},
        {"leading dot and case", {QStringLiteral(".PDF")}, "application/pdf", 10, false, std::nullopt},
        // A subtype of an allowed type is not the allowed type.
        {"csv is a kind of text, not text",
         {QStringLiteral("txt")},
         "text/csv",
         10,
         false,
         Kind::fileWithUnsupportedExtension},
        {"no allowed types", {}, "application/pdf", 10, false, Kind::fileWithUnsupportedExtension},
        {"unknown extension",
         {QStringLiteral("zzqq")},
         "application/octet-stream",
         10,
         false,
         Kind::fileWithUnsupportedExtension},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        auto view = makeControl<TSRUploadFileView>(uploadField(c.extensions, 2));
        if (c.mime)
            view->acceptFile(fileOf(c.mime, c.size));
        EXPECT_EQ(view->hasValue(), c.mime != nullptr);
        const auto error = view->validate(c.allowEmpty);
        ASSERT_EQ(error.has_value(), c.expected.has_value());
        if (error) {
            EXPECT_EQ(error->kind, *c.expected);
        }
    }
}

TEST(UploadFileViewDeathTest, MissingOrOversizedLimitEndsTheProcess) {
    EXPECT_DEATH(
        {
            auto view = makeControl<TSRUploadFileView>(uploadField({QStringLiteral("pdf")}, std::nullopt));
            view->acceptFile(fileOf("application/pdf", 1));
            (void)view->validate(false);
        },
        "no maximum file size");
    EXPECT_DEATH(
        {
            auto view =
                makeControl<TSRUploadFileView>(uploadField({QStringLiteral("pdf")}, quint64(1) << 20));
            view->acceptFile(fileOf("application/pdf", 1));
            (void)view->validate(false);
        },
        "too large");
}

TEST(UploadFileView, LimitIsOnlyNeededOnceAnAllowedFileIsThere) {
    auto view = makeControl<TSRUploadFileView>(uploadField({QStringLiteral("pdf")}, std::nullopt));
    EXPECT_EQ(view->validate(false)->kind, Kind::fieldValueIsEmpty);
    view->acceptFile(fileOf("image/png", 1));
    EXPECT_EQ(view->validate(false)->kind, Kind::fileWithUnsupportedExtension);
    // The largest count that still fits: (2^20 - 1) units.
    auto roomy = makeControl<TSRUploadFileView>(uploadField({QStringLiteral("pdf")}, (quint64(1) << 20) - 1));
    roomy->acceptFile(fileOf("application/pdf", 5));
    EXPECT_FALSE(roomy->validate(false).has_value());
}

TEST(UploadFileView, MenuOffersPhotosOnlyForImageTypes) {
    struct Case {
        std::vector<QString> extensions;
        QStringList expected;
    };
    const QStringList fileOnly{QStringLiteral("Other File")};
    const QStringList both{QStringLiteral("Other File"), QStringLiteral("Photo Library")};
    const Case cases[] = {
        {{QStringLiteral("pdf")}, fileOnly},
        {{QStringLiteral("pdf"), QStringLiteral("png")}, both},
        {{QStringLiteral("jpg")}, both},
        {{QStringLiteral("heic")}, both},
        {{}, fileOnly},
    };
    for (const Case& c : cases) {
        auto view = makeControl<TSRUploadFileView>(uploadField(c.extensions, 5));
        EXPECT_EQ(menuTitles(view.get()), c.expected) << c.extensions.size();
    }
}

TEST(UploadFileView, MenuActionsAskTheScreenAndAcceptedFileIsShown) {
    ScreenStub screen;
    auto* view = makeControl<TSRUploadFileView>(uploadField({QStringLiteral("png")}, 5), &screen);
    screen.resize(390, 120);
    screen.show();
    auto* button =
        screen.findChild<QPushButton*>(QStringLiteral("TSRUploadFileView.idScan.chooseFileButton"));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), QStringLiteral("Choose file…"));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(view->chooseFileMenu()->isVisible());
    view->chooseFileMenu()->close();

    view->openPhotoPickerAction()->trigger();
    view->openFileBrowserAction()->trigger();
    EXPECT_EQ(screen.pickers, (QStringList{QStringLiteral("photo"), QStringLiteral("file")}));
    EXPECT_EQ(screen.asked, view);

    TSRFile file = fileOf("image/png", 3);
    file.filename = QStringLiteral("лична карта.png");
    view->acceptFile(file);
    EXPECT_EQ(view->filenameLabel->text(), QStringLiteral("лична карта.png"));
    EXPECT_TRUE(view->filenameLabel->isVisible());
    EXPECT_EQ(view->fileToUpload->data.size(), 3);
}
