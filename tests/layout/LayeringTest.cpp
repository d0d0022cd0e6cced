// The SDK's folders form layers: a folder includes only itself and the folders listed for it.
// The screens (form, credit, kyc) know their base class, never each other; only the routing
// unit (steps) names them, and its headers stay free of them so that whoever routes a step
// does not depend on the screens' insides.

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace {

const std::map<QString, std::set<QString>>& allowedIncludes() {
    static const std::map<QString, std::set<QString>> table{
        {"platform", {}},
        {"documents", {"platform"}},
        {"backend", {"platform", "documents"}},
        {"appearance", {"platform"}},
        {"resources", {}},
        {"ui", {"platform", "appearance"}},
        {"api", {"platform", "documents", "backend", "appearance", "ui", "steps"}},
        {"steps", {"platform", "documents", "backend", "appearance", "ui", "api", "form", "credit", "kyc"}},
        {"form", {"platform", "documents", "backend", "appearance", "resources", "ui", "api", "steps"}},
        {"credit", {"platform", "documents", "backend", "appearance", "resources", "ui", "api", "steps"}},
        {"kyc", {"platform", "documents", "backend", "appearance", "resources", "ui", "api", "steps"}},
    };
    return table;
}

const std::set<QString> kScreens{"form", "credit", "kyc"};

// The folder right under tessara/ of a path such as ".../tessara/form/controls/X.h".
QString folderOf(const QString& path) {
    const qsizetype at = path.lastIndexOf(QStringLiteral("tessara/"));
    if (at < 0)
        return {};
    const QString rest = path.mid(at + 8);
    return rest.section(QLatin1Char('/'), 0, 0);
}

// Why `file` may not include `included`, or an empty text when it may.
QString violation(const QString& file, const QString& included) {
    const QString from = folderOf(file);
    const QString to = folderOf(included);
    const auto rule = allowedIncludes().find(from);
    if (rule == allowedIncludes().end())
        return QStringLiteral("%1 lies in a folder the layer table does not know").arg(file);
    if (from == to)
        return {};
    if (!rule->second.contains(to))
        return QStringLiteral("%1 includes %2: %3/ may not depend on %4/").arg(file, included, from, to);
    if (from == QLatin1String("steps") && file.endsWith(QLatin1String(".h")) && kScreens.contains(to))
        return QStringLiteral("%1 includes %2: a routing header must not name a screen").arg(file, included);
    return {};
}

TEST(Layering, RuleTellsAllowedFromForbidden) {
    struct Row {
        const char* file;
        const char* included;
        bool allowed;
    };
    const Row rows[] = {
        {"src/tessara/form/TSRFormController.cpp", "tessara/api/TSRViewController.h", true},
        {"src/tessara/form/controls/TSRCheckbox.cpp", "tessara/form/TSRControl.h", true},
        {"src/tessara/api/TSRViewController.cpp", "tessara/form/TSRFormController.h", false},
        {"src/tessara/platform/MainThread.cpp", "tessara/form/TSRControl.h", false},
        {"src/tessara/ui/Alert.cpp", "tessara/api/Tessara.h", false},
        {"src/tessara/credit/X.cpp", "tessara/form/TSRFormController.h", false},
        {"src/tessara/steps/StepRouter.cpp", "tessara/form/TSRFormController.h", true},
        {"src/tessara/steps/StepRouter.h", "tessara/form/TSRFormController.h", false},
        {"src/tessara/newfolder/X.cpp", "tessara/platform/FatalError.h", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(violation(row.file, row.included).isEmpty(), row.allowed)
            << row.file << " -> " << row.included;
}

TEST(Layering, EveryIncludeOfTheSdkFollowsTheLayers) {
    static const QRegularExpression include(QStringLiteral(R"(^\s*#\s*include\s*[<"](tessara/[^">]+)[">])"),
                                            QRegularExpression::MultilineOption);
    int files = 0;
    for (const char* root : {"/src/tessara", "/include/tessara"}) {
        QDirIterator it(QStringLiteral(TESSARA_SOURCE_DIR) + QLatin1String(root),
                        {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
            ++files;
            const QString text = QString::fromUtf8(file.readAll());
            for (auto match = include.globalMatch(text); match.hasNext();) {
                const QString problem = violation(path, match.next().captured(1));
                EXPECT_TRUE(problem.isEmpty()) << problem.toStdString();
            }
        }
    }
    EXPECT_GT(files, 100) << "the source tree was not found";
}

} // namespace
