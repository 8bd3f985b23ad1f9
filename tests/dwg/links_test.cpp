// References that lead nowhere, in files whose checksums are right: whatever is taken instead is told.
#include <gtest/gtest.h>

#include <algorithm>

#include "drafting_host/dwg/dwg_reader.h"
#include "drafting_host/dwg/group_names.h"
#include "dwg/changed_sample.h"

namespace brenvik {
namespace {

using namespace dwg;

constexpr HandleValue Nobody = 0xFFFE;

/// A reference of two bytes behind its code: how many bytes, and these.
std::string BitsOfReference(HandleValue handle) {
    return "0010" + test::BitsOf(std::string{static_cast<char>(handle >> 8U), static_cast<char>(handle)});
}

class DwgLinks : public testing::Test {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    }

    /// The drawing of a release, with one object's last bits that are `from` set to `to`.
    static DrawingData Changed(const std::string& release, HandleValue handle, const std::string& from,
                               const std::string& to) {
        return test::ChangedSample(release, handle, [&](std::string& bits) {
            const std::size_t at = bits.rfind(from);
            if (at == std::string::npos) throw std::runtime_error("no such bits");
            bits.replace(at, from.size(), to);
        });
    }

    static DrawingData WithReference(const std::string& release, HandleValue handle, HandleValue from,
                                     HandleValue to) {
        return Changed(release, handle, BitsOfReference(from), BitsOfReference(to));
    }

    static void ExpectTold(const DrawingData& data, const std::string& text) { test::ExpectLoss(data, text); }
};

TEST_F(DwgLinks, ALayerThatIsNotThereIsToldWithTheEntitiesOnIt) {
    for (const char* release : {"AC1014", "AC1015"})
        ExpectTold(
            WithReference(release, 0x51D, 0x4D3, Nobody),
            "CIRCLE (handle 51D) refers to a layer (handle FFFE), which the drawing doesn't have: \"0\" is "
            "taken");
}

TEST_F(DwgLinks, ALayersLineTypeThatIsNotThereIsTold) {
    ExpectTold(WithReference("AC1015", 0x27D, 0x280, Nobody),
               "LAYER (handle 27D) refers to a line type (handle FFFE), which the drawing doesn't have: "
               "\"Continuous\" is taken");
}

TEST_F(DwgLinks, ATextStyleThatIsNotThereIsTold) {
    ExpectTold(WithReference("AC1015", 0x3B9, 0x399, Nobody),
               "text (handle 3B9) refers to a text style (handle FFFE), which the drawing doesn't have: "
               "\"Standard\" is taken");
}

TEST_F(DwgLinks, AMemberOfAGroupThatIsNotThereIsTold) {
    const DrawingData data = WithReference("AC1015", 0x6A5, 0x6A2, Nobody);
    ExpectTold(data,
               "GROUP (handle 6A5) refers to an entity (handle FFFE), which the drawing doesn't have: the "
               "reference is left out");
    ASSERT_EQ(data.groups.size(), 2U);
    EXPECT_EQ(data.groups[1].members.size(), 5U);
}

TEST_F(DwgLinks, AMemberOfAGroupThatIsNoneOrStandsTwiceIsTold) {
    // Three references to nothing take the room of one.
    const DrawingData without = Changed("AC1015", 0x6A5, "0101" + BitsOfReference(0x6A2),
                                        "01010000" + test::BitsOf("\x50") + test::BitsOf("\x50"));
    EXPECT_TRUE(std::ranges::any_of(without.notes, [](const ReadNote& note) {
        return note.dataLost && note.text.starts_with("GROUP (handle 6A5)") &&
               note.text.find(" to an entity without a handle, which") != std::string::npos;
    }));
    const DrawingData twice = WithReference("AC1015", 0x6A5, 0x6A2, 0x6A1);
    ExpectTold(twice,
               "GROUP (handle 6A5) has the entity (handle 6A1) twice, of which one is taken: another may be "
               "missing");
    EXPECT_EQ(twice.groups[1].members.size(), 5U);
}

TEST_F(DwgLinks, AMemberThatDoesntNameItsGroupIsToldAsIsTheOneThatDoes) {
    for (const char* release : {"AC1014", "AC1015"}) {
        const DrawingData data = WithReference(release, 0x69E, 0x69B, 0x29B);
        ExpectTold(
            data,
            "GROUP (handle 69E) has the entity (handle 29B), which doesn't name the group: another may "
            "be missing");
        ExpectTold(data,
                   "entity (handle 69B) names GROUP (handle 69E), which doesn't have it: the group may be "
                   "damaged");
    }
    const DrawingData other = WithReference("AC1015", 0x69B, 0x69E, 0x6A5);
    ExpectTold(
        other,
        "entity (handle 69B) names GROUP (handle 6A5), which doesn't have it: the group may be damaged");
}

TEST(DwgGroups, MembersThatNoneOfNamesTheGroupAreAnotherProgramsHabit) {
    GroupData group;
    group.handle = 0x69E;
    group.members = {0x10, 0x11};
    GroupsOfEntities entities;
    Object entity;
    for (const HandleValue member : group.members) {
        entity.handle = member;
        entities.Add(entity);
    }
    Reading silent, told;
    entities.Check({group}, silent);
    EXPECT_TRUE(silent.data.notes.empty());
    entity.reactors = {group.handle};
    entities.Add(entity);
    entities.Check({group}, told);
    ASSERT_EQ(told.data.notes.size(), 1U);
    EXPECT_EQ(told.data.notes[0].text,
              "GROUP (handle 69E) has the entity (handle 10), which doesn't name the group: another may be "
              "missing");
}

TEST_F(DwgLinks, AReferenceThatShowsAnotherBlockThanTheOneThatListsItIsTold) {
    const DrawingData data = WithReference("AC1015", 0xA43, 0xA0B, 0x6F2);
    ExpectTold(
        data,
        "INSERT (handle A43) shows the block \"MyBlock\", though block \"my_block\" (handle A0B) has it "
        "among its references: one of the two may be damaged");
}

TEST_F(DwgLinks, ASheetUnderAnotherNameThanItsOwnIsTold) {
    const DrawingData data = Changed("AC1015", 0x25A, test::BitsOf("MyLayout"), test::BitsOf("MyLaYput"));
    ExpectTold(
        data,
        "sheet \"MyLaYput\" (handle 25A) stands under \"MyLayout\" in the dictionary of all sheets: one of "
        "the two may be damaged");
}

TEST_F(DwgLinks, ATextWithoutAStyleIsTold) {
    ExpectTold(
        Changed("AC1015", 0x756, "0101" + BitsOfReference(0x399), "01010000" + test::BitsOf("\x50\x50")),
        "text (handle 756) refers to a text style without a handle, which the drawing doesn't have: "
        "\"Standard\" is taken");
}

TEST_F(DwgLinks, AGroupWhoseEntryOfTheDictionaryIsGoneIsTold) {
    // The dictionary of groups is that which owns them.
    ExpectTold(WithReference("AC1015", 0xD, 0x6A5, Nobody),
               "GROUP (handle 6A5) has no name of its own in the dictionary of groups: it gets one");
}

TEST_F(DwgLinks, ASheetAndItsBlockFindEachOtherByOneReference) {
    const DrawingData data = WithReference("AC1015", 0x25A, 0x259, Nobody);
    ExpectTold(
        data,
        "sheet \"MyLayout\" (handle 25A) is taken as that of block \"*Paper_Space\" (handle 259), though "
        "the sheet refers to another");
    EXPECT_EQ(data.blocks[1].layoutName, "MyLayout");
    const DrawingData other = WithReference("AC1015", 0x259, 0x25A, Nobody);
    ExpectTold(
        other,
        "sheet \"MyLayout\" (handle 25A) is taken as that of block \"*Paper_Space\" (handle 259), though "
        "the block refers to another");
    EXPECT_EQ(other.blocks[1].layoutName, "MyLayout");
}

TEST_F(DwgLinks, SheetsOfRelease14FindTheirBlocks) {
    const DrawingData data =
        ReadDwg(test::FileBytes(test::SampleFolder() / "dwg" / "ACadSharp__sample_AC1014.dwg"), "job.dwg");
    std::vector<std::string> names;
    for (const BlockData& block : data.blocks)
        if (!block.layoutName.empty()) names.push_back(block.layoutName);
    std::ranges::sort(names);
    EXPECT_EQ(names, (std::vector<std::string>{"Layout1", "Layout2", "Model", "MyLayout"}));
}

TEST_F(DwgLinks, AFaceThatAPolyfaceMeshHasLostIsTold) {
    const DrawingData sound =
        ReadDwg(test::FileBytes(test::SampleFolder() / "dwg" / "ACadSharp__sample_AC1015.dwg"), "job.dwg");
    EXPECT_TRUE(std::ranges::none_of(sound.notes, [](const ReadNote& note) {
        return note.dataLost && note.text.starts_with("POLYLINE");
    }));
    // 5 vertices and 2 faces, each number in a byte behind two bits.
    ExpectTold(
        Changed("AC1015", 0x422,
                "01"
                "00000101"
                "01"
                "00000010",
                "01"
                "00000101"
                "01"
                "00000011"),
        "POLYLINE_PFACE (handle 422): its head states 5 vertices and 3 faces, found 5 and 2, which are "
        "taken");
}

TEST_F(DwgLinks, AnObjectThatHoldsMoreThanIsReadIsTold) {
    // Flag, flag and the number of members, each in a byte behind two bits: five of six.
    const DrawingData data = Changed("AC1015", 0x6A5,
                                     "0100000001"
                                     "0100000110",
                                     "0100000001"
                                     "0100000101");
    EXPECT_TRUE(std::ranges::any_of(data.notes, [](const ReadNote& note) {
        return note.dataLost && note.text.starts_with("GROUP (handle 6A5) has ") &&
               note.text.ends_with(" bits more than its references take: it may be damaged");
    }));
}

TEST_F(DwgLinks, ExtendedDataBehindAnUnknownCodeAreToldAsLost) {
    // Item 1070 with the value 1, then 1071 made to 1072.
    const std::string item =
        "01000110"
        "00000001"
        "00000000";
    ExpectTold(
        Changed("AC1015", 0xA8F, item + "01000111", item + "01001000"),
        "entity (handle A8F): the extended data of \"AcDbBlockRepETag\" break off at an unknown code, the "
        "rest is left out");
}

TEST_F(DwgLinks, APolylineWithoutItsEndIsTold) {
    ExpectTold(
        WithReference("AC1015", 0x422, 0x42A, 0x999),
        "POLYLINE_PFACE (handle 422) refers to a SEQEND (handle 999), which the drawing doesn't have: the "
        "reference is left out");
}

TEST_F(DwgLinks, ObjectsOfClassesThatTheFileDoesNotNameAreTold) {
    for (const char* release : {"AC1014", "AC1015"}) {
        std::string bytes = test::FileBytes(test::SampleFolder() / "dwg" /
                                            (std::string("ACadSharp__sample_") + release + ".dwg"));
        // The second row of the file's locators: number, place and size. A size of 0 is that of no section.
        constexpr std::size_t sizeOfClasses = 0x19 + 9 + 5;
        for (std::size_t i = 0; i < 4; ++i) bytes[sizeOfClasses + i] = '\0';
        const DrawingData data = ReadDwg(bytes, "job.dwg");
        EXPECT_TRUE(std::ranges::any_of(data.notes, [](const ReadNote& note) {
            return note.dataLost && note.text.ends_with(
                                        " objects are of classes that the file doesn't name: "
                                        "what is lost with them can't be known");
        })) << release;
    }
}

TEST_F(DwgLinks, AWrongChecksumOfTheHeadIsALoss) {
    constexpr std::size_t pictureAt = 0x0D;
    for (const char* release : {"AC1014", "AC1015"}) {
        std::string bytes = test::FileBytes(test::SampleFolder() / "dwg" /
                                            (std::string("ACadSharp__sample_") + release + ".dwg"));
        bytes[pictureAt] = static_cast<char>(bytes[pictureAt] ^ 1);
        ExpectTold(ReadDwg(bytes, "job.dwg"), "the checksum of the file's head is wrong");
    }
}

TEST_F(DwgLinks, WhoSavedLastArrivesAndStylesThatDoNotAreRemarked) {
    for (const char* release : {"AC1018", "AC1021", "AC1024", "AC1032"}) {
        const DrawingData data =
            ReadDwg(test::FileBytes(test::SampleFolder() / "dwg" /
                                    (std::string("ACadSharp__sample_") + release + ".dwg")),
                    "job.dwg");
        const auto saver = std::ranges::find(data.file->header, "$LASTSAVEDBY",
                                             [](const auto& variable) { return variable.first; });
        ASSERT_NE(saver, data.file->header.end()) << release;
        EXPECT_EQ(saver->second, "  1\r\nalber\r\n");
        EXPECT_TRUE(std::ranges::any_of(data.notes, [](const ReadNote& note) {
            return !note.dataLost &&
                   note.text ==
                       "$DIMSTYLE is \"custom_style_ltypes\", a style that isn't taken along: "
                       "\"Standard\" is current instead";
        })) << release;
    }
}

}  // namespace
}  // namespace brenvik
