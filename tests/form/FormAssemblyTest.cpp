// How a step's fields become the screen: which control each field makes, which start hidden,
// and where styled controls go.

#include "FormTestSupport.h"
#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/form/PositionStyle.h"
#include "tessara/form/TSRControl.h"
#include "tessara/form/TSRControlFactory.h"
#include "tessara/form/controls/TSRA1Button.h"
#include "tessara/form/controls/TSRA1ImageView.h"

#include <QLabel>
#include <QVBoxLayout>
#include <cmath>

using namespace tessara;
using namespace tessara::test;

namespace {

QString classOf(const TSRControl* control) {
    const QString name = QString::fromLatin1(control->widget()->metaObject()->className());
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

struct FactoryCase {
    FieldType type;
    const char* control; // nullptr: the field makes none
};

const FactoryCase kFactory[] = {
    {FieldType::text, "TSRLabel"},
    {FieldType::newLine, nullptr},
    {FieldType::horizontalLine, "TSRHorizontalLine"},
    {FieldType::inputField, "TSRInputField"},
    {FieldType::inputArea, "TSRInputArea"},
    {FieldType::checkbox, "TSRCheckbox"},
    {FieldType::radioButtons, "TSRRadioButtonView"},
    {FieldType::dropdown, "TSRDropdownButton"},
    {FieldType::flowButton, "TSRFlowButton"},
    {FieldType::section, "TSRSectionView"},
    {FieldType::group, nullptr},
    {FieldType::consent, "TSRConsentToggle"},
    {FieldType::submitButton, nullptr},
    {FieldType::uploadFile, "TSRUploadFileView"},
    {FieldType::hint, "TSRLabel"},
    {FieldType::link, "TSRLinkButton"},
    {FieldType::nomenclature, "TSRDropdownButton"},
    {FieldType::date, "TSRDatePicker"},
};

FieldJSON fieldOf(FieldType type) {
    FieldJSON field;
    field.type = type;
    field.key = QStringLiteral("k");
    field.label = QStringLiteral("Етикет");
    if (type == FieldType::section)
        field.fields = std::vector<FieldJSON>{};
    return field;
}

} // namespace

TEST(ControlFactory, MakesTheControlOfEachFieldType) {
    for (const FactoryCase& c : kFactory) {
        SCOPED_TRACE(rawValue(c.type).toStdString());
        QWidget parent;
        TSRControl* control = TSRControlFactory::makeControl(fieldOf(c.type), &parent);
        if (!c.control) {
            EXPECT_EQ(control, nullptr);
            continue;
        }
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(classOf(control), QLatin1String(c.control));
        EXPECT_EQ(control->widget()->parent(), &parent);
        EXPECT_EQ(control->field, fieldOf(c.type));
    }

    // A section whose fields were never loaded renders nothing.
    QWidget parent;
    FieldJSON unloaded = fieldOf(FieldType::section);
    unloaded.fields.reset();
    EXPECT_EQ(TSRControlFactory::makeControl(unloaded, &parent), nullptr);
}

TEST(ControlFactory, HiddenRulePrecedence) {
    struct Case {
        std::optional<bool> hideInEndUserFrontend;
        std::optional<QString> variableType;
        std::optional<bool> isHidden;
        bool hidden;
    };
    const Case cases[] = {
        {std::nullopt, std::nullopt, std::nullopt, false},
        {std::nullopt, std::nullopt, true, true},
        {false, std::nullopt, true, true},
        {true, std::nullopt, false, true},
        {true, QString(), false, true},
        {std::nullopt, QStringLiteral("PERSONAL"), false, true},
        {std::nullopt, QString(), true, false}, // an empty variableType shows, whatever isHidden says
        {false, QString(), true, false},
    };
    for (const Case& c : cases) {
        FieldJSON field = fieldOf(FieldType::inputField);
        field.hideInEndUserFrontend = c.hideInEndUserFrontend;
        field.variableType = c.variableType;
        field.isHidden = c.isHidden;
        QWidget parent;
        TSRControl* control = TSRControlFactory::makeControl(field, &parent);
        EXPECT_EQ(control->widget()->isHidden(), c.hidden)
            << c.hideInEndUserFrontend.value_or(-1) << " "
            << c.variableType.value_or("<absent>").toStdString() << " " << c.isHidden.value_or(-1);
    }
}

TEST(FormAssembly, StepNameIsTheBarTitle) {
    const struct {
        const char* json;
        QString title;
    } cases[] = {
        {R"({"type":"FORM","name":"Лични данни","fields":[]})", QStringLiteral("Лични данни")},
        {R"({"type":"FORM","fields":[]})", QString()},
    };
    for (const auto& c : cases) {
        FormScreen screen(decodeStep(c.json));
        EXPECT_EQ(screen.form()->navigationTitle(), c.title) << c.json;
        EXPECT_EQ(screen.navigation->navigationBar()->title(), c.title) << c.json;
        EXPECT_EQ(screen.navigation->navigationBar()->titleLabel()->text(), c.title) << c.json;
    }
}

TEST(FormAssembly, FieldsThatRenderNothingLeaveAnEmptyStack) {
    FormScreen screen(decodeStep(R"({"type":"FORM","directionId":"d","fields":[
        {"type":"NEW_LINE"},{"type":"GROUP","key":"g"},{"type":"SUBMIT","key":"s"}]})"));
    EXPECT_TRUE(screen.form()->formFields().empty());
    EXPECT_TRUE(screen.form()->positionedViews().empty());
    for (int i = 0; i < screen.form()->stackView()->layout()->count(); ++i)
        EXPECT_EQ(screen.form()->stackView()->layout()->itemAt(i)->widget(), nullptr);
}

TEST(FormAssembly, PositionStylesPinControlsOverTheScreenButKeepThemInTheForm) {
    FormScreen screen(decodeStep(R"({"type":"FORM","directionId":"d","fields":[
        {"type":"TEXT","key":"top","value":"Горе","styleClass":"big position-top"},
        {"type":"TEXT","key":"middle","value":"Среда","styleClass":"POSITION-MIDDLE"},
        {"type":"TEXT","key":"bottom","value":"Долу","notes":"position-bottom"},
        {"type":"TEXT","key":"both","value":"Двете","styleClass":"position-top","notes":"position-bottom"},
        {"type":"TEXT","key":"loose","value":"Свободно","styleClass":"position-somewhere"},
        {"type":"TEXT","key":"stacked","value":"В колоната","styleClass":"centered"}]})"));
    TSRFormController* form = screen.form();
    ASSERT_EQ(form->formFields().size(), 6u);
    const int height = form->height();
    const int pad = TSRFormController::padding();

    auto geometryOf = [&](const char* key) {
        return screen.find(QStringLiteral("TSRLabel.") + key)->geometry();
    };
    for (const char* key : {"top", "middle", "bottom", "both", "loose"}) {
        QWidget* view = screen.find(QStringLiteral("TSRLabel.") + key);
        EXPECT_EQ(view->parentWidget(), form) << key;
        EXPECT_EQ(view->x(), pad) << key;
        EXPECT_EQ(view->width(), form->width() - 2 * pad) << key;
        EXPECT_TRUE(view->isVisible()) << key;
    }
    EXPECT_EQ(geometryOf("top").top(), 16);
    EXPECT_EQ(geometryOf("middle").center().y(), height / 2 - (geometryOf("middle").height() + 1) % 2);
    EXPECT_EQ(geometryOf("bottom").bottom() + 1, height - 16);
    EXPECT_EQ(geometryOf("both").top(), 16);
    EXPECT_EQ(geometryOf("both").bottom() + 1, height - 16);
    EXPECT_EQ(geometryOf("loose").top(), 0);

    QWidget* stacked = screen.find(QStringLiteral("TSRLabel.stacked"));
    EXPECT_EQ(stacked->parentWidget(), form->stackView());
    int stackedControls = 0;
    for (TSRControl* control : form->formFields())
        stackedControls += control->addToStackView ? 1 : 0;
    EXPECT_EQ(stackedControls, 1);
}

TEST(FormAssembly, PlacementOfPinnedViews) {
    using A = PositionStyle::Anchor;
    const QRect screen(0, 0, 390, 800);
    EXPECT_EQ(PositionStyle::placement({A::top}, screen, 16, 50), QRect(16, 16, 358, 50));
    EXPECT_EQ(PositionStyle::placement({A::middle}, screen, 20, 50), QRect(20, 375, 350, 50));
    EXPECT_EQ(PositionStyle::placement({A::bottom}, screen, 16, 50), QRect(16, 734, 358, 50));
    EXPECT_EQ(PositionStyle::placement({A::bottom, A::bottom}, screen, 16, 50), QRect(16, 734, 358, 50));
    EXPECT_EQ(PositionStyle::placement({A::middle, A::bottom}, screen, 16, 50), QRect(16, 16, 358, 768));
    EXPECT_EQ(PositionStyle::placement({A::none}, screen, 16, 50), QRect(16, 0, 358, 50));

    EXPECT_EQ(PositionStyle::pieces(QStringLiteral("  a   position-top  b position-x ")),
              (std::vector<A>{A::top, A::none}));
    EXPECT_TRUE(PositionStyle::pieces(QStringLiteral("title bold")).empty());
}

TEST(FormAssembly, A1StyleBuildsTheClosingScreen) {
    RecordingDelegate delegate;
    FormScreen screen(decodeStep(R"({"type":"FORM","directionId":"done","fields":[
        {"type":"TEXT","key":"thanks","value":"Искането Ви е изпратено.","styleClass":"A1"}]})"),
                      std::nullopt, &delegate);
    TSRFormController* form = screen.form();
    auto* logo = form->findChild<TSRA1ImageView*>();
    auto* button = form->findChild<TSRA1Button*>();
    ASSERT_TRUE(logo && button);
    EXPECT_EQ(button->text(), QStringLiteral("Благодарим Ви"));
    EXPECT_EQ(form->formFields().size(), 1u);
    EXPECT_EQ(logo->geometry().center().y(), form->height() / 2 - (logo->height() + 1) % 2);
    EXPECT_EQ(button->geometry().bottom() + 1, form->height() - 16);
    // The text of the A1 field itself stays in the column.
    EXPECT_EQ(screen.find(QStringLiteral("TSRLabel.thanks"))->parentWidget(), form->stackView());

    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(delegate.closedSteps, std::vector<QString>{QStringLiteral("done")});
}

TEST(FormAssembly, A1WithMiddlePositionPutsTheLogoOnTop) {
    FormScreen screen(decodeStep(R"({"type":"FORM","directionId":"done","fields":[
        {"type":"TEXT","key":"thanks","value":"Готово","styleClass":"a1 position-middle"}]})"));
    auto* logo = screen.form()->findChild<TSRA1ImageView*>();
    ASSERT_NE(logo, nullptr);
    EXPECT_EQ(logo->y(), 16);
}

TEST(FormAssembly, LeadingSpaceComesFromTheThemeAtEachRead) {
    TSRAppearance& theme = currentAppearance();
    const double saved = theme.leadingSpace();
    theme.setLeadingSpace(std::nan(""));
    FormScreen screen(decodeStep(R"({"type":"FORM","directionId":"d","fields":[
        {"type":"INPUT","key":"name","label":"Име"}]})"));
    QWidget* input = screen.find(QStringLiteral("TSRInputField.name"));
    EXPECT_EQ(TSRFormController::padding(), 16);
    EXPECT_EQ(input->x(), 16);

    theme.setLeadingSpace(24);
    screen.navigation->resize(391, 844);
    settle(20);
    EXPECT_EQ(input->x(), 24);
    EXPECT_EQ(input->width(), screen.form()->stackView()->width() - 48);
    theme.setLeadingSpace(saved);
}

TEST(FormAssemblyDeathTest, AScreenWithoutStepDocumentEndsTheProgram) {
    EXPECT_DEATH(
        {
            TSRFormController form;
            form.loadViewIfNeeded();
        },
        "without its step document");
}
