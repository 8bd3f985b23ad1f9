// Binary drawings that are cut off or changed: a drawing with what was sound, or a failure that says where.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>

#include "base/failure.h"
#include "drafting_host/dwg/dwg_reader.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

std::size_t EntityCount(const DrawingData& data) {
    std::size_t count = 0;
    for (const BlockData& block : data.blocks) count += block.entities.size();
    return count;
}

bool SomethingIsTold(const DrawingData& data) {
    return std::any_of(data.notes.begin(), data.notes.end(),
                       [](const ReadNote& note) { return note.dataLost; });
}

/// Nothing where the file was refused, by a failure that names it.
std::optional<DrawingData> ReadDamaged(const std::string& bytes) {
    try {
        return ReadDwg(bytes, "damaged.dwg");
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 321);
        EXPECT_NE(failure.detail().find("damaged.dwg"), std::string::npos);
        EXPECT_NE(failure.detail().find("expected"), std::string::npos);
        return std::nullopt;
    }
}

class DamagedDwg : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
        mBytes = test::FileBytes(test::SampleFolder() / "dwg" / (std::string(GetParam()) + ".dwg"));
        ASSERT_FALSE(mBytes.empty());
        mCount = EntityCount(ReadDwg(mBytes, "sound.dwg"));
    }

    std::string mBytes;
    std::size_t mCount = 0;
};

TEST_P(DamagedDwg, CutOffAnywhereItIsRefusedOrTold) {
    constexpr std::size_t cuts = 40;
    for (std::size_t i = 0; i < cuts; ++i) {
        const auto read = ReadDamaged(mBytes.substr(0, mBytes.size() * i / cuts));
        EXPECT_TRUE(!read || EntityCount(*read) == mCount || SomethingIsTold(*read)) << i;
    }
}

TEST_P(DamagedDwg, WithChangedBytesItIsRefusedOrTold) {
    std::mt19937 random(7);
    for (int round = 0; round < 12; ++round) {
        std::string changed = mBytes;
        const int changes = round % 2 == 0 ? 20 : 2000;
        for (int i = 0; i < changes; ++i)
            changed[random() % changed.size()] = static_cast<char>(random() & 0xFF);
        const auto read = ReadDamaged(changed);
        EXPECT_TRUE(!read || EntityCount(*read) == mCount || SomethingIsTold(*read)) << round;
    }
}

INSTANTIATE_TEST_SUITE_P(OfEachContainer, DamagedDwg,
                         testing::Values("ACadSharp__BLOCKFLIPPARAMETER", "ezdxf__807_1",
                                         "ACadSharp__sample_AC1018", "ACadSharp__sample_AC1021"));

TEST(DwgReleases, OlderOnesAreRefusedWithTheWayOut) {
    for (const std::string mark : {"AC1009", "AC1006", "AC2.10", "MC0.0\0", "AC1099"}) {
        try {
            ReadDwg(mark + std::string(200, '\0'), "old.dwg");
            FAIL() << mark;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number(), 321);
            EXPECT_NE(failure.detail().find("old.dwg"), std::string::npos);
            EXPECT_NE(failure.detail().find("release 13 to 2018"), std::string::npos);
            EXPECT_NE(failure.detail().find("saved as DXF"), std::string::npos);
        }
    }
}

TEST(DwgReleases, ALaterOneIsToldAsSuch) {
    for (const std::string mark : {"AC1033", "AC1040", "AC1099"}) {
        try {
            ReadDwg(mark + std::string(200, '\0'), "new.dwg");
            FAIL() << mark;
        } catch (const Failure& failure) {
            EXPECT_NE(failure.detail().find("a later one can be saved as DXF, or as DWG of release 2018"),
                      std::string::npos)
                << failure.detail();
            EXPECT_EQ(failure.detail().find("older"), std::string::npos) << failure.detail();
        }
    }
}

TEST(DwgReleases, AFileOfAHeadAloneIsRefused) {
    for (const char* mark : {"AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"})
        for (const std::size_t size : {0UL, 20UL, 0x80UL, 0x100UL, 0x500UL})
            EXPECT_THROW(ReadDwg(mark + std::string(size, '\0'), "head.dwg"), Failure) << mark << size;
}

}  // namespace
}  // namespace brenvik
