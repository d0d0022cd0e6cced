// A realistic step on a phone-sized screen: geometry a user would notice.

#include "FormTestSupport.h"
#include "tessara/form/TSRControl.h"

#include <QScrollArea>
#include <QScrollBar>

using namespace tessara;
using namespace tessara::test;

namespace {

SubmissionJSON realisticStep() {
    SubmissionJSON step = decodeStep(R"({"type":"FORM","name":"Кандидатстване","submissionId":"sub-1",
      "directionId":"personal","fields":[
      {"type":"TEXT","key":"title","value":"Вашите данни"},
      {"type":"HINT","key":"hint","value":"Попълнете данните си точно както са в личната Ви карта."},
      {"type":"INPUT","key":"name","label":"Име и фамилия"},
      {"type":"INPUT","key":"egn","label":"ЕГН","validation":"^[0-9]{10}$","validationError":"ЕГН трябва да съдържа 10 цифри."},
      {"type":"AREA","key":"address","label":"Постоянен адрес"},
      {"type":"DATE","key":"birthDate","label":"Дата на раждане","value":"1990-05-17"},
      {"type":"DROPDOWN","key":"city","label":"Град","options":[{"id":1,"label":"София","value":"SOF"},
                                                              {"id":2,"label":"Пловдив","value":"PDV"}]},
      {"type":"RADIO","key":"employment","label":"Заетост","options":[{"id":1,"label":"На трудов договор","value":"EMP"},
          {"id":2,"label":"Самоосигуряващ се","value":"SELF"},{"id":3,"label":"Пенсионер","value":"RET"}]},
      {"type":"HORIZONTAL_LINE","key":"line"},
      {"type":"SECTION","key":"income"},
      {"type":"UPLOAD_FILE","key":"idCard","label":"Снимка на лична карта","allowedExt":["jpg","png","pdf"],"maxSize":5},
      {"type":"CHECKBOX","key":"newsletter","label":"Искам да получавам новини"},
      {"type":"CONSENT","key":"terms","label":"Приемам","required":true,"directionId":"consent-terms","directionLabel":"общите условия"},
      {"type":"LINK","key":"privacy","label":"Политика за поверителност","value":"example.com/privacy"},
      {"type":"FLOW","key":"continue","label":"Продължи","directionId":"next","styleClass":"position-bottom"}
    ]})");
    for (FieldJSON& field : step.fields) {
        if (field.key == QStringLiteral("income"))
            field.fields = decodeStep(R"({"fields":[
                {"type":"TEXT","key":"incomeTitle","value":"Доходи"},
                {"type":"INPUT","key":"salary","label":"Месечен нетен доход"},
                {"type":"CHECKBOX","key":"otherIncome","label":"Имам и други доходи"}]})")
                               .fields;
    }
    return step;
}

} // namespace

TEST(FormLook, PhoneScreenKeepsTheColumnInsideItsMarginsAndTheButtonAboveTheBottom) {
    FormScreen screen(realisticStep());
    settle(300); // the fade-in
    TSRFormController* form = screen.form();
    ASSERT_NE(form, nullptr);

    const int padding = TSRFormController::padding();
    const int column = form->stackView()->width() - 2 * padding;
    for (TSRControl* control : form->formFields()) {
        QWidget* view = control->widget();
        if (!control->addToStackView)
            continue;
        EXPECT_TRUE(view->isVisible()) << view->objectName().toStdString();
        EXPECT_EQ(view->width(), column) << view->objectName().toStdString();
        EXPECT_EQ(view->x(), padding) << view->objectName().toStdString();
    }
    QWidget* button = screen.find(QStringLiteral("TSRFlowButton.continue"));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->parentWidget(), form);
    EXPECT_EQ(button->geometry().bottom() + 1, form->height() - 16);
    EXPECT_EQ(button->x(), padding);
    EXPECT_EQ(button->width(), form->width() - 2 * padding);

    // Scrolled to the end, the last control clears the pinned button.
    form->scrollView()->verticalScrollBar()->setValue(form->scrollView()->verticalScrollBar()->maximum());
    settle(20);
    QWidget* last = screen.find(QStringLiteral("TSRLinkButton.privacy"));
    ASSERT_NE(last, nullptr);
    const QPoint lastBottom = last->mapTo(form, QPoint(0, last->height()));
    EXPECT_LT(lastBottom.y(), button->y());
}
