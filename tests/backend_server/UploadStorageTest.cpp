#include "backend/UploadStorage.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using tessara::UploadStorage;

TEST(UploadStorage, NamesFromTheClientCannotLeaveTheStorageFolder) {
    struct Case {
        const char* name;
        const char* safe;
    };
    const Case cases[] = {
        {"доход.pdf", "доход.pdf"},
        {"../../etc/passwd", ".._.._etc_passwd"},
        {"C:\\Users\\me\\scan.PDF", "C__Users_me_scan.PDF"},
        {"..", "file"},
        {"", "file"},
        {"  ", "file"},
        {"a\nb\tc.pdf", "a_b_c.pdf"},
        {"what?<now>|\"x\"*.jpeg", "what__now___x__.jpeg"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(UploadStorage::safeName(QString::fromUtf8(c.name)), QString::fromUtf8(c.safe));
    }
}

TEST(UploadStorage, KeepsEveryUploadUnderSubmissionAndField) {
    QTemporaryDir root;
    const UploadStorage storage(root.path());
    QString error;
    const auto first = storage.store(QStringLiteral("sub-1"), QStringLiteral("../key"), 1,
                                     QStringLiteral("a.pdf"), "one", &error);
    const auto second = storage.store(QStringLiteral("sub-1"), QStringLiteral("../key"), 2,
                                      QStringLiteral("a.pdf"), "two", &error);
    ASSERT_TRUE(first && second) << error.toStdString();
    EXPECT_NE(*first, *second);
    for (const QString& path : {*first, *second})
        EXPECT_TRUE(path.startsWith(QDir(root.path()).absolutePath() + QStringLiteral("/sub-1/.._key/")))
            << path.toStdString();
    QFile file(*second);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "two");
}
