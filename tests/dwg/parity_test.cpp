// The parity of pages of release 2007, which finds damage where no checksum is read.
#include "drafting_host/dwg/parity.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "drafting_host/dwg/dwg_reader.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

using namespace dwg;

/// Two blocks, interleaved; the second has data and parity that fit: the code's own polynomial.
std::string TwoBlocks() {
    constexpr auto polynomial = std::to_array<unsigned char>({116, 231, 216, 30, 1});
    constexpr std::size_t blocks = 2;
    std::string stored(blocks * ParityBlock, '\0');
    for (std::size_t i = 0; i < polynomial.size(); ++i)
        stored[(ParityBlock - polynomial.size() + i) * blocks + 1] = static_cast<char>(polynomial[i]);
    return stored;
}

TEST(DwgParity, ABlockIsZeroAtTheRootsOfItsCode) {
    EXPECT_TRUE(FitsParity(TwoBlocks(), 2, Parity::OfDataPages));
    for (std::size_t byte = 0; byte < 2 * ParityBlock; ++byte) {
        std::string changed = TwoBlocks();
        changed[byte] = static_cast<char>(changed[byte] ^ 4);
        EXPECT_FALSE(FitsParity(changed, 2, Parity::OfDataPages)) << byte;
    }
    EXPECT_FALSE(FitsParity(TwoBlocks(), 2, Parity::OfSystemPages));
    EXPECT_FALSE(FitsParity(TwoBlocks().substr(1), 2, Parity::OfDataPages));
}

TEST(DwgParity, PagesOfAProgramThatDoesntKeepItFit) {
    std::string stored(ParityBlock, '\0');
    stored[7] = 'x';
    EXPECT_TRUE(FitsParity(stored, 1, Parity::OfDataPages));
    EXPECT_TRUE(FitsParity(stored, 1, Parity::OfSystemPages));
}

/// What is told of the sample of release 2007 with a byte changed, as far as it is of parity.
std::string ToldWithChanged(std::size_t byte) {
    std::string bytes = test::FileBytes(test::SampleFolder() / "dwg" / "ACadSharp__sample_AC1021.dwg");
    bytes.at(byte) = static_cast<char>(bytes.at(byte) ^ 1);
    std::string told;
    for (const ReadNote& note : ReadDwg(bytes, "job.dwg").notes)
        if (note.dataLost && note.text.find("parity") != std::string::npos) told += note.text + "\n";
    return told;
}

TEST(DwgParity, ADamagedPageOfADrawingIsTold) {
    if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    constexpr std::size_t unused = 0x10, head = 0x80 + 3 * ParityBlock - 1;
    EXPECT_EQ(ToldWithChanged(unused), "");
    EXPECT_EQ(ToldWithChanged(head), "the parity of the file's head is wrong\n");
    constexpr std::size_t pages = 0x480, blocksOfMap = 6;
    EXPECT_EQ(ToldWithChanged(pages + blocksOfMap * ParityBlock - 1),
              "byte 1152: the parity of a map is wrong\n");
}

}  // namespace
}  // namespace brenvik
