// Values that can't be, and groups that stand twice: what is taken for them is told with its line.
#include <gtest/gtest.h>

#include "drafting_host/dxf/writing/dxf_writer.h"
#include "dxf/dxf_texts.h"

namespace brenvik {
namespace {

using test::Entities;
using test::Groups;
using test::ModelSpace;
using test::NotesOf;
using test::Read;
using test::Section;

DrawingData WithHeader(const std::string& header) {
    return Read(Groups("0 SECTION|2 HEADER|" + header + "|0 ENDSEC|0 SECTION|2 ENTITIES|0 ENDSEC|0 EOF"));
}

/// What is told of one line with more groups, each time with its place.
std::string ToldOf(const std::string& groups) {
    const DrawingData data = Read(Entities("0 LINE|8 0|10 0|20 0|11 1|21 0|" + groups));
    EXPECT_EQ(ModelSpace(data).size(), 1U);
    for (const ReadNote& note : data.notes) EXPECT_GT(note.line, 0U);
    return NotesOf(data);
}

TEST(DxfDoubtful, ALineWeightThatIsNoneIsByLayerAndTold) {
    const DrawingData data = Read(Entities("0 POINT|370 -9|10 0|20 0"));
    EXPECT_EQ(ModelSpace(data).at(0).lineweight, -1);
    EXPECT_NE(NotesOf(data).find("group 370 holds -9 where a line weight from -3 to 211 was expected"),
              std::string::npos);
    EXPECT_NE(ToldOf("370 212").find("group 370 holds 212"), std::string::npos);
    EXPECT_EQ(ToldOf("370 -3"), "");
}

TEST(DxfDoubtful, TextsThatAreNotUtf8InAReleaseOfUtf8AreTold) {
    const std::string told =
        NotesOf(Read(Section("HEADER", "9 $ACADVER|1 AC1021") +
                     Section("ENTITIES", "0 POINT|8 \xC4\xE2\xE5|10 0|20 0") + Groups("0 EOF")));
    EXPECT_NE(told.find("expected text in UTF-8"), std::string::npos) << told;
}

TEST(DxfDoubtful, AScaleOfLineTypesOfZeroOrLessIsTold) {
    EXPECT_NE(ToldOf("48 0").find("group 48 holds \"0\""), std::string::npos);
    EXPECT_NE(ToldOf("48 -2.5").find("group 48 holds \"-2.5\""), std::string::npos);
    EXPECT_EQ(ToldOf("48 0.5"), "");
}

TEST(DxfDoubtful, ManyValuesOfASortAreToldOnceWithTheirNumber) {
    const std::string told = NotesOf(
        Read(Entities("0 POINT|370 -9|10 0|20 0|0 POINT|370 999|10 0|20 0|0 POINT|370 -9|10 0|20 0")));
    EXPECT_NE(told.find("group 370 holds -9"), std::string::npos);
    EXPECT_NE(told.find("; so it is with 2 others"), std::string::npos) << told;
    EXPECT_EQ(told.find("group 370", told.find("group 370") + 1), std::string::npos) << told;
}

TEST(DxfDoubtful, AShortNumberOfExtendedDataBeyondItsBitsIsTold) {
    const std::string told = ToldOf("1001 ACAD|1070 40000");
    EXPECT_NE(
        told.find(
            "group 1070 holds \"40000\" where a number from -32768 to 32767 was expected; -25536 is taken"),
        std::string::npos)
        << told;
    EXPECT_EQ(ToldOf("1001 ACAD|1070 -32768"), "");
}

TEST(DxfDoubtful, JustificationsAndAttachmentsThatAreNoneAreTold) {
    const auto told = [](const std::string& groups) { return NotesOf(Read(Entities(groups))); };
    EXPECT_NE(told("0 TEXT|10 0|20 0|1 a|72 9").find("group 72 holds 9"), std::string::npos);
    EXPECT_NE(told("0 TEXT|10 0|20 0|1 a|73 -1").find("group 73 holds -1"), std::string::npos);
    EXPECT_NE(told("0 MTEXT|10 0|20 0|1 a|71 12").find("group 71 holds 12"), std::string::npos);
    EXPECT_NE(told("0 MTEXT|10 0|20 0|1 a|72 0").find("group 72 holds 0"), std::string::npos);
}

TEST(DxfDoubtful, AGroupThatStandsTwiceWithOtherValuesIsTold) {
    const auto told = [](const std::string& groups) { return NotesOf(Read(Entities(groups))); };
    EXPECT_NE(told("0 CIRCLE|10 0|20 0|40 5|40 7")
                  .find("CIRCLE: group 40 stands twice, with \"5\" and with \"7\", where one was expected"),
              std::string::npos);
    EXPECT_NE(told("0 LINE|8 A|8 B|10 0|20 0|11 1|21 1").find("group 8 stands twice"), std::string::npos);
    EXPECT_NE(told("0 ARC|10 0|20 0|40 5|50 0|50 9|51 90").find("group 50 stands twice"), std::string::npos);
    EXPECT_NE(told("0 LWPOLYLINE|90 2|10 0|20 0|42 1|42 0.5|10 5|20 5")
                  .find("a point of its list has group 42 twice"),
              std::string::npos);
    EXPECT_NE(told("0 POLYLINE|66 1|0 VERTEX|10 0|20 0|42 1|42 2|0 VERTEX|10 4|20 0|0 SEQEND")
                  .find("VERTEX: group 42 stands twice"),
              std::string::npos);
    EXPECT_NE(told("0 SPLINE|71 1|40 0|40 0|40 1|40 1|10 0|20 0|20 3|10 1|20 1").find("has group 20 twice"),
              std::string::npos);
    EXPECT_NE(told("0 SPLINE|11 0|21 0|31 1|11 4|21 4|31 1|31 2").find("has group 31 twice"),
              std::string::npos);
    // The same value twice is one value, and lists are lists.
    EXPECT_EQ(told("0 CIRCLE|10 0|20 0|40 5|40 5.0"), "");
    EXPECT_EQ(told("0 LWPOLYLINE|90 2|10 0|20 0|42 1|10 5|20 5|42 0.5"), "");
    EXPECT_EQ(told("0 SPLINE|71 1|72 4|73 2|40 0|40 0|40 1|40 1|10 0|20 0|10 1|20 1"), "");
}

TEST(DxfDoubtful, APointOfAListWithoutItsYRefusesTheEntity) {
    const auto told = [](const std::string& groups) { return NotesOf(Read(Entities(groups))); };
    EXPECT_NE(told("0 LWPOLYLINE|10 0|20 0|10 5|10 5|20 5")
                  .find("group 20 was expected with each of 3 points, found 2"),
              std::string::npos);
    EXPECT_NE(told("0 SPLINE|71 1|40 0|40 0|40 1|40 1|10 0|20 0|10 1").find("group 20 was expected"),
              std::string::npos);
}

TEST(DxfDoubtful, HalfAPointIsTold) {
    const auto told = [](const std::string& groups) { return NotesOf(Read(Entities(groups))); };
    EXPECT_NE(told("0 SOLID|10 0|20 0|11 1|21 0|12 0|22 1|13 1").find("group 23 was expected with group 13"),
              std::string::npos);
    EXPECT_NE(told("0 3DFACE|10 0|20 0|11 1|21 0|12 0|22 1|23 1").find("group 13 was expected with group 23"),
              std::string::npos);
    EXPECT_NE(told("0 TEXT|10 0|20 0|1 a|72 1|21 5").find("group 11 was expected with group 21"),
              std::string::npos);
    EXPECT_EQ(told("0 3DFACE|10 0|20 0|11 1|21 0|12 0|22 1"), "") << "a triangle";
}

TEST(DxfDoubtful, APointOfExtendedDataWithoutItsThreeCoordinatesIsTold) {
    EXPECT_NE(ToldOf("1001 ACAD|1010 1|1020 2").find("groups 1020 and 1030 were expected behind group 1010"),
              std::string::npos);
    EXPECT_EQ(ToldOf("1001 ACAD|1010 1|1020 2|1030 3"), "");
}

TEST(DxfDoubtful, FlagsThatNobodyKnowsAreTold) {
    const auto told = [](const std::string& groups) { return NotesOf(Read(Entities(groups))); };
    EXPECT_NE(told("0 LWPOLYLINE|70 99999|10 0|20 0").find("group 70 holds 99999"), std::string::npos);
    EXPECT_NE(told("0 3DFACE|70 16|10 0|20 0|11 1|21 0|12 0|22 1").find("group 70 holds 16"),
              std::string::npos);
    EXPECT_EQ(told("0 LWPOLYLINE|70 129|10 0|20 0"), "");
}

TEST(DxfDoubtful, AVariableThatStandsTwiceIsTold) {
    const DrawingData data = WithHeader("9 $ACADVER|1 AC1015|9 $INSUNITS|70 1|9 $INSUNITS|70 4");
    EXPECT_EQ(data.insertUnits, 4);
    EXPECT_NE(NotesOf(data).find(
                  "drawing variable \"$INSUNITS\" stands twice, with \"1\" and with \"4\"; the last one "
                  "counts"),
              std::string::npos)
        << NotesOf(data);
    EXPECT_NE(NotesOf(WithHeader("9 $ACADVER|1 AC1015|9 $INSUNITS|70 1|70 4")).find("has two values"),
              std::string::npos);
    EXPECT_EQ(NotesOf(WithHeader("9 $ACADVER|1 AC1015|9 $INSUNITS|70 1|9 $INSUNITS|70 1")), "");
}

TEST(DxfDoubtful, AReleaseThatIsNoneIsToldAndSavedAsTheLastOneBefore) {
    const DrawingData later = WithHeader("9 $ACADVER|1 AC1099");
    EXPECT_NE(NotesOf(later).find(
                  "release \"AC1099\" is unknown: expected one up to AC1032; the drawing is read as "
                  "AC1032"),
              std::string::npos)
        << NotesOf(later);
    EXPECT_EQ(Read(WriteDxf(later)).version, "AC1032");
    EXPECT_EQ(WithHeader("9 $ACADVER|1 AC1016").version, "AC1015");
    EXPECT_EQ(NotesOf(WithHeader("9 $ACADVER|1 AC1032")), "");
}

}  // namespace
}  // namespace brenvik
