// Entity handles as hexadecimal text.
#include "base/handle_text.h"

#include <gtest/gtest.h>

namespace brenvik {
namespace {

TEST(HandleText, IsUpperCaseHexadecimalWithoutLeadingZeros) {
    EXPECT_EQ(HandleToText(0), "0");
    EXPECT_EQ(HandleToText(0x2A), "2A");
    EXPECT_EQ(HandleToText(0x1AF), "1AF");
    EXPECT_EQ(HandleToText(0xFFFFFFFFFFFFFFFF), "FFFFFFFFFFFFFFFF");
}

TEST(HandleText, IsReadInEitherCase) {
    EXPECT_EQ(HandleFromText("1af"), 0x1AFU);
    EXPECT_EQ(HandleFromText("1AF"), 0x1AFU);
    EXPECT_EQ(HandleFromText(" 2A "), 0x2AU);
    EXPECT_EQ(HandleFromText("00002A"), 0x2AU);
    EXPECT_EQ(HandleFromText("0"), 0U);
    EXPECT_EQ(HandleFromText("FFFFFFFFFFFFFFFF"), 0xFFFFFFFFFFFFFFFFU);
}

TEST(HandleText, OtherTextIsNoHandle) {
    for (const char* text :
         {"", " ", "G1", "1G", "-1", "+1", "0x1A", "1 2", "10000000000000000", "1A,2", "\t1"})
        EXPECT_EQ(HandleFromText(text), std::nullopt) << '"' << text << '"';
}

TEST(HandleText, GoesThereAndBack) {
    for (std::uint64_t handle = 1; handle != 0; handle = handle << 1) {
        EXPECT_EQ(HandleFromText(HandleToText(handle)), handle);
        EXPECT_EQ(HandleFromText(HandleToText(handle - 1)), handle - 1);
    }
}

}  // namespace
}  // namespace brenvik
