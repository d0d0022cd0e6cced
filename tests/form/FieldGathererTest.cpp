// The gathering rules on their own, with stand-in controls whose checks the test decides.

#include "tessara/form/FieldGatherer.h"

#include "tessara/form/TSRValidateable.h"

#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

using namespace tessara;

namespace {

class StandInControl : public QWidget, public TSRValidateable {
public:
    StandInControl(QWidget* parent, FieldType type, const char* key, bool required,
                   std::optional<QString> held, bool fails = false)
        : QWidget(parent)
        , fails_(fails) {
        FieldJSON f;
        f.type = type;
        f.key = QString::fromLatin1(key);
        f.isRequired = required;
        field = f;
        value = std::move(held);
    }
    void setup() override {}
    QWidget* widget() override { return this; }
    bool hasValue() const override { return value.has_value(); }
    std::optional<ControlValidationError> validate(bool) override {
        ++validations;
        if (fails_)
            return ControlValidationError{ControlValidationError::Kind::fieldValueInvalid, this};
        return std::nullopt;
    }
    int validations = 0;

private:
    bool fails_;
};

struct GatherCase {
    const char* name;
    FieldType type;
    bool required;
    std::optional<QString> held;
    bool allowEmpty;
    std::optional<QString> sent; // absent: nothing is appended
    bool validated;
};

const GatherCase kCases[] = {
    {"InputTrimmed", FieldType::inputField, false, QStringLiteral(" \t a b \n"), false, QStringLiteral("a b"),
     true},
    {"InputControlCharactersTrimmed", FieldType::inputField, false, QStringLiteral("\u0001x\u0007"), false,
     QStringLiteral("x"), true},
    {"EmptyInputAllowedSendsNothing", FieldType::inputField, false, QString(), true, std::nullopt, true},
    {"OptionalCheckboxUntouched", FieldType::checkbox, false, std::nullopt, false, QStringLiteral("false"),
     false},
    {"OptionalConsentKeepsItsValue", FieldType::consent, false, QStringLiteral("true"), false,
     QStringLiteral("true"), false},
    {"OptionalCheckboxAllowEmpty", FieldType::checkbox, false, QStringLiteral("true"), true, std::nullopt,
     false},
    {"RequiredCheckboxAllowEmpty", FieldType::checkbox, true, QStringLiteral("true"), true, std::nullopt,
     true},
    {"RequiredCheckboxSent", FieldType::checkbox, true, QStringLiteral("false"), false,
     QStringLiteral("false"), true},
    {"OptionalNomenclatureUntrimmed", FieldType::nomenclature, false, QStringLiteral("  X "), false,
     QStringLiteral("  X "), false},
    {"OptionalNomenclatureAbsent", FieldType::nomenclature, false, std::nullopt, false, std::nullopt, false},
    {"RequiredNomenclatureTrimmed", FieldType::nomenclature, true, QStringLiteral("  X "), false,
     QStringLiteral("X"), true},
    {"UploadValidatedNotSent", FieldType::uploadFile, false, std::nullopt, false, std::nullopt, true},
};

class Gathering : public ::testing::TestWithParam<GatherCase> {};

} // namespace

TEST_P(Gathering, AppendsWhatTheRuleSays) {
    const GatherCase& c = GetParam();
    QWidget parent;
    auto* control = new StandInControl(&parent, c.type, "k", c.required, c.held);

    const auto result = FieldGatherer::gather({control}, c.allowEmpty);
    const auto* values = std::get_if<std::vector<FieldValueDTO>>(&result);
    ASSERT_NE(values, nullptr);
    if (c.sent) {
        ASSERT_EQ(values->size(), 1u);
        EXPECT_EQ(values->front(), (FieldValueDTO{QStringLiteral("k"), *c.sent}));
    } else {
        EXPECT_TRUE(values->empty());
    }
    EXPECT_EQ(control->validations > 0, c.validated);
}

INSTANTIATE_TEST_SUITE_P(Form, Gathering, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<GatherCase>& info) { return info.param.name; });

TEST(Gathering, HiddenControlsAreSkippedAndTheFirstFaultDropsEverything) {
    QWidget parent;
    auto* hiddenBad = new StandInControl(&parent, FieldType::inputField, "hidden", true, std::nullopt, true);
    hiddenBad->hide();
    auto* good = new StandInControl(&parent, FieldType::inputField, "good", false, QStringLiteral("1"));
    auto* bad = new StandInControl(&parent, FieldType::inputField, "bad", false, QStringLiteral("2"), true);
    auto* later =
        new StandInControl(&parent, FieldType::inputField, "later", false, QStringLiteral("3"), true);

    const auto result = FieldGatherer::gather({hiddenBad, good, bad, later}, false);
    const auto* error = std::get_if<ControlValidationError>(&result);
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->field, static_cast<TSRControl*>(bad));
    EXPECT_EQ(hiddenBad->validations, 0);
    EXPECT_EQ(later->validations, 0);

    const auto shown = FieldGatherer::gather({hiddenBad, good}, false);
    ASSERT_TRUE(std::holds_alternative<std::vector<FieldValueDTO>>(shown));
    EXPECT_EQ(std::get<std::vector<FieldValueDTO>>(shown).size(), 1u);
}

TEST(GatheringDeathTest, APassingControlWithoutValueEndsTheProgram) {
    EXPECT_DEATH(
        {
            QWidget parent;
            auto* date = new StandInControl(&parent, FieldType::date, "birthDate", false, std::nullopt);
            FieldGatherer::gather({date}, false);
        },
        "birthDate");
}
