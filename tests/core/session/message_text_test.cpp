// Message boxes as text: their one line, their buttons in order, and the names of the answers.
#include "session/message_text.h"

#include <gtest/gtest.h>

namespace brenvik {
namespace {

TEST(MessageText, IsOneLineWithTheTitleAhead) {
    EXPECT_EQ(MessageLine({"not found", "", MessageIcon::None, MessageButtons::Ok}), "[] not found");
    EXPECT_EQ(MessageLine({"13\r\nBrenvik\r\nType mismatch", "Title", MessageIcon::Stop, MessageButtons::Ok}),
              "[Title] 13\\r\\nBrenvik\\r\\nType mismatch");
    EXPECT_EQ(MessageLine({"a\nb\rc", "", MessageIcon::None, MessageButtons::Ok}), "[] a\\nb\\rc");
}

TEST(MessageText, OffersTheAnswersOfItsButtonsInOrder) {
    using enum MessageAnswer;
    EXPECT_EQ(OfferedAnswers(MessageButtons::Ok), std::vector{Ok});
    EXPECT_EQ(OfferedAnswers(MessageButtons::OkCancel), (std::vector{Ok, Cancel}));
    EXPECT_EQ(OfferedAnswers(MessageButtons::YesNoCancel), (std::vector{Yes, No, Cancel}));
    EXPECT_EQ(OfferedAnswers(MessageButtons::YesNo), (std::vector{Yes, No}));
}

TEST(MessageText, AsksUnlessOkIsAllThatItOffers) {
    EXPECT_FALSE(IsQuestion(MessageButtons::Ok));
    for (const MessageButtons buttons :
         {MessageButtons::OkCancel, MessageButtons::YesNoCancel, MessageButtons::YesNo})
        EXPECT_TRUE(IsQuestion(buttons));
}

TEST(MessageText, NamesTheAnswers) {
    EXPECT_EQ(AnswerName(MessageAnswer::Ok), "ok");
    EXPECT_EQ(AnswerName(MessageAnswer::Cancel), "cancel");
    EXPECT_EQ(AnswerName(MessageAnswer::Yes), "yes");
    EXPECT_EQ(AnswerName(MessageAnswer::No), "no");
}

}  // namespace
}  // namespace brenvik
