// Words as they are typed into a shell.
#include "shell/shell_word.h"

#include <gtest/gtest.h>

#include "support/ezdxf_audit.h"

namespace brenvik::app {
namespace {

TEST(ShellWord, IsQuotedOnlyWhereItHasToBe) {
    EXPECT_EQ(ShellWord("18"), "18");
    EXPECT_EQ(ShellWord("home/müller-1.5"), "home/müller-1.5");
    EXPECT_EQ(ShellWord(""), "\"\"");
    EXPECT_EQ(ShellWord("18 Birch Ply"), "\"18 Birch Ply\"");
    EXPECT_EQ(ShellWord("Jack's"), "\"Jack's\"");
    EXPECT_EQ(ShellWord("18 $(rm -r .)"), "'18 $(rm -r .)'");
    EXPECT_EQ(ShellWord("3/4\" Jack's `oak`"), "'3/4\" Jack'\\''s `oak`'");
}

TEST(ShellWord, ComesBackFromAShellAsItWas) {
    for (const std::string word :
         {"18 Oak", "a'b\"c", "$HOME `ls` \\ !x", "a;b|c&d>e<f(g)*?[h]{i}~#", "'", "\"", "\\"}) {
        const test::CommandResult said = test::RunCommand("printf %s " + ShellWord(word));
        EXPECT_EQ(said.output, word);
    }
}

}  // namespace
}  // namespace brenvik::app
