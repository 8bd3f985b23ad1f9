// Texts packed into one and taken out again.
#include "base/packed_text.h"

#include <gtest/gtest.h>

#include "base/failure.h"

namespace brenvik {
namespace {

TEST(PackedText, ComesOutAsItWentIn) {
    const std::vector<std::string> texts{"Shelf",        "",      "1:2", std::string("a\0b", 3),
                                         "two\r\nlines", "Bücher"};
    std::string packed;
    PackText(packed, "head");
    PackTexts(packed, texts);
    PackText(packed, "tail");
    PackedTexts taken(packed);
    EXPECT_EQ(taken.Take(), "head");
    EXPECT_EQ(taken.TakeAll(), texts);
    EXPECT_FALSE(taken.AtEnd());
    EXPECT_EQ(taken.Take(), "tail");
    EXPECT_TRUE(taken.AtEnd());
}

TEST(PackedText, HasItsLengthAhead) {
    std::string packed;
    PackText(packed, "Shelf");
    PackText(packed, "");
    EXPECT_EQ(packed, "5:Shelf0:");
}

TEST(PackedText, IsRefusedWhereItWasCutOffOrIsNone) {
    for (const char* text : {"", "5", "5:Shel", ":Shelf", "-1:", "x:Shelf", "99999999999999999999999:"}) {
        PackedTexts taken(text);
        EXPECT_THROW(taken.Take(), Failure) << text;
    }
    EXPECT_THROW(PackedTexts("1:x").TakeCount(), Failure);
    EXPECT_THROW(PackedTexts("1:21:a").TakeAll(), Failure);
}

}  // namespace
}  // namespace brenvik
