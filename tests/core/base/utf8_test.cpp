// Strict UTF-8: valid characters, and damaged bytes one by one.
#include "base/utf8.h"

#include <gtest/gtest.h>

#include <random>

namespace brenvik {
namespace {

TEST(Utf8, ReadsBackEveryCodePoint) {
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        if (codePoint == 0xD800) codePoint = 0xE000;
        std::string text;
        AppendUtf8(text, codePoint);
        const Utf8Character character = Utf8CharacterAt(text, 0);
        ASSERT_TRUE(character.valid);
        ASSERT_EQ(character.codePoint, codePoint);
        ASSERT_EQ(character.length, text.size());
    }
}

TEST(Utf8, KnowsTheLengths) {
    const struct {
        char32_t codePoint;
        const char* bytes;
    } cases[] = {{0x7F, "\x7F"},
                 {0x80, "\xC2\x80"},
                 {0x7FF, "\xDF\xBF"},
                 {0x800, "\xE0\xA0\x80"},
                 {0xFFFF, "\xEF\xBF\xBF"},
                 {0x10000, "\xF0\x90\x80\x80"},
                 {0x10FFFF, "\xF4\x8F\xBF\xBF"}};
    for (const auto& c : cases) {
        std::string text;
        AppendUtf8(text, c.codePoint);
        EXPECT_EQ(text, c.bytes);
    }
}

TEST(Utf8, TakesADamagedByteAlone) {
    for (const char* text : {"\x80", "\xBF", "\xC3",
                             "\xC3"
                             "a",
                             "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xED\xA0\x80",
                             "\xED\xBF\xBF", "\xE2\x82", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80",
                             "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80", "\xFE", "\xFF"}) {
        const Utf8Character character = Utf8CharacterAt(text, 0);
        EXPECT_FALSE(character.valid);
        EXPECT_EQ(character.length, 1U);
        EXPECT_EQ(character.codePoint, static_cast<unsigned char>(text[0]));
    }
}

TEST(Utf8, WalksAnyBytesToTheEnd) {
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        std::string text(1 + random() % 9, ' ');
        for (char& c : text) c = static_cast<char>(random() % 256);
        std::string again;
        std::size_t at = 0;
        while (at < text.size()) {
            const Utf8Character character = Utf8CharacterAt(text, at);
            ASSERT_GE(character.length, 1U);
            ASSERT_LE(at + character.length, text.size());
            if (character.valid)
                AppendUtf8(again, character.codePoint);
            else
                again += text[at];
            at += character.length;
        }
        ASSERT_EQ(again, text);
    }
}

TEST(Utf8DeathTest, EncodesNoSurrogate) {
    std::string text;
    EXPECT_DEATH(AppendUtf8(text, 0xD800), "code point");
    EXPECT_DEATH(AppendUtf8(text, 0x110000), "code point");
}

}  // namespace
}  // namespace brenvik
