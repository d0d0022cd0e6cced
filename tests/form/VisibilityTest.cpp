// Sections that appear and disappear as other fields announce their values.

#include "FormTestSupport.h"
#include "tessara/form/TSRControlFactory.h"
#include "tessara/form/TSRSectionView.h"
#include "tessara/form/VisibilityRule.h"
#include "tessara/form/controls/TSRCheckbox.h"
#include "tessara/form/controls/TSRDropdownButton.h"
#include "tessara/platform/NotificationBus.h"

using namespace tessara;
using namespace tessara::test;

namespace {

struct RuleCase {
    const char* name;
    GroupControlOperatorType op;
    bool shouldHide;
    std::optional<QString> ruleValue;
    QVariant announced;
    bool hidden;
};

const RuleCase kRules[] = {
    {"EqualHideOnMatch", GroupControlOperatorType::equal, true, QStringLiteral("yes"), QStringLiteral("yes"),
     true},
    {"EqualHideOnOther", GroupControlOperatorType::equal, true, QStringLiteral("yes"), QStringLiteral("no"),
     false},
    {"EqualShowOnMatch", GroupControlOperatorType::equal, false, QStringLiteral("yes"), QStringLiteral("yes"),
     false},
    {"EqualShowOnOther", GroupControlOperatorType::equal, false, QStringLiteral("yes"), QStringLiteral("no"),
     true},
    {"NotEqualShowOnMatch", GroupControlOperatorType::notEqual, false, QStringLiteral("yes"),
     QStringLiteral("yes"), true},
    {"NotEqualShowOnOther", GroupControlOperatorType::notEqual, false, QStringLiteral("yes"),
     QStringLiteral("no"), false},
    {"NotEqualHideOnMatch", GroupControlOperatorType::notEqual, true, QStringLiteral("yes"),
     QStringLiteral("yes"), false},
    {"NotEqualHideOnOther", GroupControlOperatorType::notEqual, true, QStringLiteral("yes"),
     QStringLiteral("no"), true},
    {"ComparisonIsCaseSensitive", GroupControlOperatorType::equal, true, QStringLiteral("yes"),
     QStringLiteral("Yes"), false},
    {"AbsentRuleValueNeverMatches", GroupControlOperatorType::equal, true, std::nullopt, QString(), false},
    {"MissingAnnouncedValueHides", GroupControlOperatorType::equal, false, QStringLiteral("yes"), QVariant(),
     true},
    {"NonTextValueHides", GroupControlOperatorType::equal, false, QStringLiteral("true"), QVariant(true),
     true},
};

class VisibilityRuleTable : public ::testing::TestWithParam<RuleCase> {};

GroupControlConditionJSON rule(std::optional<GroupControlOperatorType> op, std::optional<bool> hide,
                               std::optional<QString> value = QStringLiteral("x")) {
    GroupControlConditionJSON condition;
    condition.fieldKey = QStringLiteral("watched");
    condition.groupOperator = op;
    condition.shouldHide = hide;
    condition.value = std::move(value);
    return condition;
}

} // namespace

TEST_P(VisibilityRuleTable, DecidesBothWays) {
    const RuleCase& c = GetParam();
    QVariantMap userInfo;
    if (c.announced.isValid())
        userInfo.insert(QStringLiteral("value"), c.announced);
    EXPECT_EQ(VisibilityRule::hiddenAfterAnnouncement(rule(c.op, c.shouldHide, c.ruleValue), userInfo),
              c.hidden);
}

INSTANTIATE_TEST_SUITE_P(Form, VisibilityRuleTable, ::testing::ValuesIn(kRules),
                         [](const ::testing::TestParamInfo<RuleCase>& info) { return info.param.name; });

TEST(Visibility, SectionFollowsAnnouncementsOfFieldsOnTheForm) {
    SubmissionJSON step = decodeStep(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[
        {"type":"CHECKBOX","key":"hasJob","label":"Работя"},
        {"type":"DROPDOWN","key":"housing","label":"Жилище","options":[{"id":1,"label":"Собствено","value":"OWN"},
                                                                      {"id":2,"label":"Под наем","value":"RENT"}]},
        {"type":"SECTION","key":"job","hidden":true},
        {"type":"SECTION","key":"rent"},
        {"type":"SECTION","key":"plain","hidden":true}]})");
    step.fields[2].fields = decodeStep(R"({"fields":[
        {"type":"GROUP","key":"g0","condition":{"fieldKey":"hasJob","sectionKey":"other","value":"true","operator":"EQUAL","hide":false}},
        {"type":"GROUP","key":"g1"},
        {"type":"GROUP","key":"g2","condition":{"fieldKey":"hasJob","sectionKey":"job","value":"true","operator":"EQUAL","hide":false}},
        {"type":"INPUT","key":"employer","label":"Работодател"}]})")
                                .fields;
    step.fields[3].fields = decodeStep(R"({"fields":[
        {"type":"GROUP","key":"g3","condition":{"fieldKey":"housing","sectionKey":"rent","value":"RENT","operator":"NOT_EQ","hide":true}},
        {"type":"INPUT","key":"rentAmount","label":"Наем"}]})")
                                .fields;
    step.fields[4].fields = decodeStep(R"({"fields":[{"type":"INPUT","key":"x","label":"X"}]})").fields;
    FormScreen screen(step);

    auto* job = screen.find<TSRSectionView>(QStringLiteral("TSRSectionView.job"));
    auto* rent = screen.find<TSRSectionView>(QStringLiteral("TSRSectionView.rent"));
    auto* plain = screen.find<TSRSectionView>(QStringLiteral("TSRSectionView.plain"));
    ASSERT_TRUE(job && rent && plain);
    // The rule holder is the GROUP child whose condition names this section.
    ASSERT_TRUE(job->group.has_value());
    EXPECT_EQ(job->group->key, QStringLiteral("g2"));
    EXPECT_FALSE(plain->group.has_value());

    // Nothing is evaluated before the first announcement.
    EXPECT_TRUE(job->isHidden());
    EXPECT_FALSE(rent->isHidden());

    auto* checkbox = screen.find<TSRCheckbox>(QStringLiteral("TSRCheckbox.hasJob"));
    screen.click(QStringLiteral("TSRCheckbox.hasJob"));
    EXPECT_FALSE(job->isHidden());
    EXPECT_TRUE(job->isVisible());
    checkbox->setSelected(false); // set from code announces too
    EXPECT_TRUE(job->isHidden());

    auto* housing = screen.find<TSRDropdownButton>(QStringLiteral("TSRDropdownButton.housing"));
    housing->choose(housing->field->options->at(0));
    EXPECT_TRUE(rent->isHidden());
    housing->choose(housing->field->options->at(1));
    EXPECT_FALSE(rent->isHidden());

    // A section without a rule keeps its first state for good.
    NotificationBus::instance().post(NotificationBus::frameworkName(QStringLiteral("x")),
                                     {{QStringLiteral("value"), QStringLiteral("anything")}});
    NotificationBus::instance().post(NotificationBus::frameworkName(QStringLiteral("hasJob")), {});
    EXPECT_TRUE(plain->isHidden());
    // An announcement without a text value hides a ruled section.
    EXPECT_TRUE(job->isHidden());
}

TEST(VisibilityDeathTest, RuleWithoutOperatorOrHideFlagEndsTheProgram) {
    const QVariantMap userInfo{{QStringLiteral("value"), QStringLiteral("x")}};
    EXPECT_DEATH(VisibilityRule::hiddenAfterAnnouncement(rule(std::nullopt, true), userInfo), "operator");
    EXPECT_DEATH(VisibilityRule::hiddenAfterAnnouncement(rule(GroupControlOperatorType::equal, std::nullopt),
                                                         userInfo),
                 "hide flag");
}

namespace {
// Records every height a widget is given.
class HeightLog : public QObject {
public:
    std::vector<int> heights;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize)
            heights.push_back(static_cast<QWidget*>(watched)->height());
        return false;
    }
};
} // namespace

TEST(Visibility, AnAppearingSectionDoesNotSqueezeTheColumnOnTheWay) {
    // Taller than the screen, so the column has to grow when the section shows.
    QString fields;
    for (int i = 0; i < 14; ++i)
        fields += QStringLiteral(R"({"type":"INPUT","key":"in%1","label":"Поле %1"},)").arg(i);
    SubmissionJSON step =
        decodeStep((QStringLiteral(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[
        {"type":"CHECKBOX","key":"more","label":"Още"},)") +
                    fields + QStringLiteral(R"({"type":"SECTION","key":"extra","hidden":true}]})"))
                       .toUtf8());
    step.fields.back().fields = decodeStep(R"({"fields":[
        {"type":"GROUP","key":"g","condition":{"fieldKey":"more","sectionKey":"extra","value":"true","operator":"EQUAL","hide":false}},
        {"type":"INPUT","key":"a","label":"А"},{"type":"INPUT","key":"b","label":"Б"},
        {"type":"INPUT","key":"c","label":"В"}]})")
                                    .fields;
    FormScreen screen(step);
    settle(50);

    auto* first = screen.find<QWidget>(QStringLiteral("TSRInputField.in0"));
    ASSERT_NE(first, nullptr);
    const int settledHeight = first->height();
    HeightLog log;
    first->installEventFilter(&log);

    screen.find<TSRCheckbox>(QStringLiteral("TSRCheckbox.more"))->setSelected(true);
    settle(50);
    EXPECT_TRUE(screen.find<TSRSectionView>(QStringLiteral("TSRSectionView.extra"))->isVisible());
    EXPECT_EQ(first->height(), settledHeight);
    for (int h : log.heights)
        EXPECT_EQ(h, settledHeight) << "the column was squeezed for a pass";
}

namespace {

// Posts an announcement from its destructor, as a child torn down with its parent might.
class PostsWhenDestroyed : public QObject {
public:
    PostsWhenDestroyed(const QString& key, QObject* parent)
        : QObject(parent)
        , name_(NotificationBus::frameworkName(key)) {}
    ~PostsWhenDestroyed() override {
        subscribersLeft = NotificationBus::instance().subscriberCount(name_);
        NotificationBus::instance().post(name_, {{QStringLiteral("value"), QStringLiteral("true")}});
    }
    static inline int subscribersLeft = -1;

private:
    QString name_;
};

} // namespace

TEST(Visibility, AWatcherBeingDestroyedIsOffTheBusBeforeItsChildrenGo) {
    // A section's own fields come from their own load, not from the step's JSON.
    FieldJSON section = decodeStep(R"({"fields":[{"type":"SECTION","key":"job"}]})").fields[0];
    section.fields = decodeStep(R"({"fields":[
        {"type":"GROUP","key":"g","condition":{"fieldKey":"hasJob","sectionKey":"job","value":"true","operator":"EQUAL","hide":false}},
        {"type":"INPUT","key":"employer","label":"Работодател"}]})")
                         .fields;
    const FieldJSON consent =
        decodeStep(R"({"fields":[{"type":"CONSENT","key":"gdpr","label":"Съгласен съм"}]})").fields[0];
    const struct {
        const char* watcher;
        FieldJSON field;
        const char* watchedKey;
    } cases[] = {{"section", section, "hasJob"}, {"consent", consent, "gdpr"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.watcher);
        const QString name = NotificationBus::frameworkName(QString::fromUtf8(c.watchedKey));
        QWidget screen;
        const std::vector<TSRControl*> controls = TSRControlFactory::makeControls({c.field}, &screen);
        ASSERT_EQ(controls.size(), 1u);
        ASSERT_EQ(NotificationBus::instance().subscriberCount(name), 1);
        new PostsWhenDestroyed(QString::fromUtf8(c.watchedKey),
                               controls[0]->widget()); // owned by the watcher
        PostsWhenDestroyed::subscribersLeft = -1;
        delete controls[0]->widget();
        EXPECT_EQ(PostsWhenDestroyed::subscribersLeft, 0);
    }
}
