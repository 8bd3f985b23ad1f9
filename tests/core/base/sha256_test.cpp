// Fingerprints as the standard gives them.
#include "base/sha256.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace brenvik {
namespace {

TEST(Sha256, IsTheOneOfTheStandardsExamples) {
    EXPECT_EQ(Sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(Sha256(std::string(1000000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

/// Around the lengths at which the end needs a block of its own.
TEST(Sha256, DiffersByEveryByteAndLength) {
    std::set<std::string> seen;
    for (std::size_t length = 50; length < 135; ++length) {
        EXPECT_TRUE(seen.insert(Sha256(std::string(length, '\0'))).second) << length;
        std::string text(length, '\0');
        text.back() = '\1';
        EXPECT_TRUE(seen.insert(Sha256(text)).second) << length;
    }
}

}  // namespace
}  // namespace brenvik
