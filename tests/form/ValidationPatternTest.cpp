#include "form/controls/ControlTestSupport.h"
#include "tessara/form/controls/TSRInputField.h"

#include <gtest/gtest.h>

using namespace tessara;
using namespace tessara::test;

namespace {

struct PatternCase {
    const char16_t* pattern;
    const char16_t* text;
    bool passes;
};

const PatternCase kPatternCases[] = {
    // Classes and boundaries cover every script.
    {u"^[\\w\\s-]+$", u"Иван Петров-Иванов", true},
    {u"^\\w+$", u"Иван!", false},
    {u"\\bПетров\\b", u"Иван Петров", true},
    {u"\\bПет\\b", u"Иван Петров", false},
    {u"^\\d{3}$", u"١٢٣", true},
    {u"^а\\sб$", u"а\u00A0б", true},
    {u"^[[:alpha:]]+$", u"Иван", true},
    {u"^[[:upper:]]", u"иван", false},
    {u"^[[:^digit:][:Cyrillic:]]+$", u"Иван", true},
    // Case folding and properties, also under their long names.
    {u"(?i)^иван ѝ$", u"ИВАН Ѝ", true},
    {u"(?i-m:^ИВАН$)", u"иван", true},
    {u"^\\p{L}+$", u"Иван", true},
    {u"^\\p{L}+$", u"Иван1", false},
    {u"^\\p{Letter}\\p{gc=Ll}+\\P{^Script=Cyrillic}$", u"Иван", true},
    {u"^\\p{Uppercase_Letter}", u"иван", false},
    // Character escapes, in and outside classes, and literal backslashes before them.
    {u"^[\\u0410-\\u044F]+$", u"Иван", true},
    {u"^[\\u0410-\\u044F]+$", u"Ivan", false},
    {u"^\\u0418\\x{432}", u"Иван", true},
    {u"^\\U0001F600\\uD83D\\uDE00$", u"😀😀", true},
    {u"^\\\\u0410$", u"\\u0410", true},
    {u"^\\\\u0410$", u"А", false},
    {u"^\\Q\\u0410\\E$", u"\\u0410", true},
    {u"(?w)\\bван(?#\\K and (?R are text here)", u"Иван ван", true},
    // The dot stops at any line end, not only LF.
    {u"^а.б$", u"а\u2028б", false},
    // Patterns that do not compile.
    {u"(Иван", u"Иван", false},
    {u"\\u041", u"Иван", false},
    {u"\\u041Z", u"Иван", false},
    // Constructs only Qt's engine reads; left to itself it would find a match in each text.
    {u"Иван(?R)?", u"Иван", false},
    {u"(Ив)(?1)?", u"Иван", false},
    {u"(*UCP)Иван", u"Иван", false},
    {u"Ив\\Kан", u"Иван", false},
    {u"(?|(Ив)|(ан))", u"Иван", false},
    {u"(Ив)(?(1)ан)", u"Иван", false},
    {u"(Ив)\\g1?", u"Иван", false},
    {u"(?P<n>Ив)", u"Иван", false},
    {u"(?n)Ив", u"Иван", false},
    {u"\\N{U+0418}", u"Иван", false},
    {u"\\o{2030}", u"Иван", false},
    {u"[И[в]]", u"Ив]", false},
    {u"[[А-я]&&[^а]]", u"И&&в]", false},
};

} // namespace

TEST(ValidationPattern, PatternsReadWithUnicodeSemantics) {
    for (const PatternCase& c : kPatternCases) {
        const QString pattern = QString::fromUtf16(c.pattern);
        SCOPED_TRACE(pattern.toStdString() + " on " + QString::fromUtf16(c.text).toStdString());
        FieldJSON field = makeField(FieldType::inputField, QStringLiteral("name"));
        field.validation = pattern;
        auto input = makeControl<TSRInputField>(field);
        input->setText(QString::fromUtf16(c.text));

        const auto error = input->validate(false);
        EXPECT_EQ(!error, c.passes);
        if (error) {
            EXPECT_EQ(error->kind, ControlValidationError::Kind::fieldValueInvalid);
        }
    }
}
