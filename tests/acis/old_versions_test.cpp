// Text of drawings of release 13 and 14: a head of one line, numbers for words, a shell without wires.
#include "free_shapes.h"

#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <gp_Pln.hxx>

#include "drafting_host/acis/sat_records.h"

namespace brenvik::acis::testing {
namespace {

enum class Words { All, Faces };

/// Text of version 400 as an older version has it. Some programs keep the words of faces.
std::string Older(const std::string& text, int version, Words kept) {
    static const std::map<std::string_view, std::string_view> numbers{
        {"forward", "0"},   {"reversed", "1"},  {"single", "0"}, {"double", "1"},     {"out", "0"},
        {"in", "1"},        {"forward_v", "0"}, {"open", "0"},   {"closed", "1"},     {"none", "0"},
        {"no_rotate", "0"}, {"rotate", "1"},    {"both", "0"},   {"no_reflect", "0"}, {"no_shear", "0"}};
    const RecordText split = SplitRecords(text);
    std::string older = std::to_string(version) + " " + std::to_string(split.records.size()) + " 1 0 \n";
    for (const Record& record : split.records) {
        older += record.name;
        for (std::size_t i = 0; i < record.fields.size(); ++i) {
            const bool isWire = record.name == "shell" && i == 4;
            const auto number = numbers.find(record.fields[i].text);
            const bool isWord = number == numbers.end() || (kept == Words::Faces && record.name == "face");
            if (!isWire) older += " " + std::string(isWord ? record.fields[i].text : number->second);
        }
        older += " #\n";
    }
    return older;
}

TEST(OldVersions, GiveTheSameBodies) {
    for (const TopoDS_Shape& shape : {CamFitting(), CutCountersink(), Moulding(), Vase(), Crossed(12, 3),
                                      TopoDS_Shape(BRepPrimAPI_MakeSphere(7).Shape()),
                                      TopoDS_Shape(BRepPrimAPI_MakeTorus(9, 2).Shape())}) {
        const std::string text = Joined(WriteText(shape));
        for (const int version : {105, 106}) {
            for (const Words kept : {Words::All, Words::Faces}) {
                const TopoDS_Shape older = ReadOne(Older(text, version, kept));
                EXPECT_EQ(Volume(older), Volume(ReadOne(text)));
                EXPECT_EQ(Count(older, TopAbs_FACE), Count(shape, TopAbs_FACE));
            }
        }
    }
}

/// All its records stand in a line each, as moving a body in its text needs.
TopoDS_Shape Panel() {
    return Drilled(BRepPrimAPI_MakeBox(100, 80, 18).Shape(), At(30, 20, -1, gp_Dir(0, 0, 1)), 5, 20);
}

TEST(OldVersions, PlaceABodyByATransformWithNumbersForItsFlags) {
    const std::string fields = "0 1 0 -1 0 0 0 0 1 100 200 300 2 rotate no_reflect no_shear";
    const std::string text = Placed(Panel(), fields);
    const std::vector<gp_Pnt> expected = Corners(ReadOne(text));
    const std::vector<gp_Pnt> found = Corners(ReadOne(Older(text, 106, Words::Faces)));
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_LT(found[i].Distance(expected[i]), 1e-12);
}

TEST(OldVersions, HaveSheetsOfRegions) {
    const TopoDS_Shape face = BRepBuilderAPI_MakeFace(gp_Pln(), 0, 3, 0, 2).Shape();
    const TopoDS_Shape older = ReadOne(Older(Joined(WriteText(face)), 106, Words::All));
    EXPECT_NEAR(Area(older), 6, 1e-12);
}

TEST(OldVersions, ThatBreakOffAreTold) {
    const std::string text = Older(Joined(WriteText(CamFitting())), 106, Words::Faces);
    for (std::size_t i = 1; i < 50; ++i)
        EXPECT_FALSE(ReadText(text.substr(0, i * text.size() / 50)).problems.empty()) << i;
}

// The layout of a drawing of release 14 by another program: a region with a transform, words for its face.
TEST(OldVersions, OfAnotherProgramAreRead) {
    const std::string square =
        "106 0 1 0\n"
        "body $-1 $1 $-1 $2 #\n"
        "lump $-1 $-1 $3 $0 #\n"
        "transform $-1 1 0 0 0 1 0 0 0 1 15.27672546982375934 -223.3501226607159253 0 1 0 0 0 #\n"
        "shell $-1 $-1 $-1 $4 $1 #\n"
        "face $-1 $-1 $5 $3 $-1 $6 forward double out #\n"
        "loop $-1 $-1 $7 $4 #\n"
        "plane-surface $-1 0 0 0 0 0 1 1 0 0 0 I I I I #\n"
        "coedge $-1 $8 $10 $-1 $11 0 $5 $-1 #\n"
        "coedge $-1 $9 $7 $-1 $12 0 $5 $-1 #\n"
        "coedge $-1 $10 $8 $-1 $13 0 $5 $-1 #\n"
        "coedge $-1 $7 $9 $-1 $14 0 $5 $-1 #\n"
        "edge $-1 $15 $16 $7 $23 0 #\n"
        "edge $-1 $16 $17 $8 $24 0 #\n"
        "edge $-1 $17 $18 $9 $25 0 #\n"
        "edge $-1 $18 $15 $10 $26 0 #\n"
        "vertex $-1 $11 $19 #\n"
        "vertex $-1 $11 $20 #\n"
        "vertex $-1 $12 $21 #\n"
        "vertex $-1 $13 $22 #\n"
        "point $-1 0 0 0 #\n"
        "point $-1 4 0 0 #\n"
        "point $-1 4 3 0 #\n"
        "point $-1 0 3 0 #\n"
        "straight-curve $-1 0 0 0 1 0 0 F 0 F 4 #\n"
        "straight-curve $-1 4 0 0 0 1 0 I I #\n"
        "straight-curve $-1 4 3 0 -1 0 0 F 0 F 4 #\n"
        "straight-curve $-1 0 3 0 0 -1 0 I I #\n"
        "End-of-ACIS-data\n";
    EXPECT_NEAR(Area(ReadOne(square)), 12, 1e-9);
}

}  // namespace
}  // namespace brenvik::acis::testing
