// What a text may look like and how it may be damaged: record layouts, signs, transforms, and the places
// at which a text breaks off.
#include "acis_testing.h"

#include <gtest/gtest.h>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBndLib.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <random>
#include <sstream>

namespace brenvik::acis::testing {
namespace {

constexpr double pi = std::numbers::pi;

TopoDS_Shape DrilledPanel() {
    const TopoDS_Shape panel = BRepPrimAPI_MakeBox(100.0, 80.0, 18.0).Shape();
    const gp_Ax2 at(gp_Pnt(30, 40, 0), gp_Dir(0, 0, 1));
    return BRepAlgoAPI_Cut(panel, BRepPrimAPI_MakeCylinder(at, 5, 18).Shape()).Shape();
}

constexpr double drilledVolume = 100.0 * 80 * 18 - 25 * pi * 18;

std::string Replaced(std::string text, const std::string& what, const std::string& by,
                     bool mustBeThere = true) {
    const std::size_t place = text.find(what);
    if (place == std::string::npos) {
        if (mustBeThere) ADD_FAILURE() << "the text does not hold " << what;
        return text;
    }
    return text.replace(place, what.size(), by);
}

std::string Told(const ReadResult& result) {
    std::string told;
    for (const Problem& problem : result.problems) told += problem.text + "\n";
    return told;
}

void ExpectRefused(const std::string& text, const std::string& word) {
    const ReadResult result = ReadText(text);
    EXPECT_TRUE(result.bodies.empty());
    ASSERT_FALSE(result.problems.empty());
    EXPECT_NE(Told(result).find(word), std::string::npos) << Told(result);
}

// The face whose surface is the bore, its sense and the signs of the surface, for turning them round.
std::string WithSigns(bool turnFace, bool turnSurface, bool turnCosine) {
    std::vector<std::string> lines = WriteText(DrilledPanel());
    for (std::size_t i = 3; i < lines.size(); ++i) {
        if (lines[i].rfind("cone-surface", 0) != 0) continue;
        const std::string pointer = "$" + std::to_string(i - 3) + " ";
        if (turnSurface) lines[i] = Replaced(lines[i], " forward ", " reversed ");
        if (turnCosine) lines[i] = Replaced(lines[i], " 0 1 5 ", " 0 -1 5 ");
        for (std::string& face : lines) {
            if (face.rfind("face ", 0) != 0 || face.find(pointer + "reversed") == std::string::npos) continue;
            if (turnFace) face = Replaced(face, "reversed", "forward");
            return Joined(lines);
        }
    }
    ADD_FAILURE() << "no bore in the text";
    return {};
}

TEST(ReadText, TakesABoreForABoreWhicheverSignsSayIt) {
    for (int signs = 0; signs < 8; ++signs) {
        SCOPED_TRACE(signs);
        const TopoDS_Shape body = ReadOne(WithSigns((signs & 1) != 0, (signs & 2) != 0, (signs & 4) != 0));
        ASSERT_FALSE(body.IsNull());
        EXPECT_NEAR(Volume(body), drilledVolume, 1e-9 * drilledVolume);
    }
}

TEST(ReadText, TurnsALoneBallOutwardWhicheverSignsSayIt) {
    const std::string text = Joined(WriteText(BRepPrimAPI_MakeSphere(gp_Pnt(1, 2, 3), 5).Shape()));
    const double volume = 4 * pi / 3 * 125;
    EXPECT_NEAR(Volume(ReadOne(text)), volume, 1e-9 * volume);
    EXPECT_NEAR(Volume(ReadOne(Replaced(text, "forward single", "reversed single"))), volume, 1e-9 * volume);
    EXPECT_NEAR(Volume(ReadOne(Replaced(text, "1 2 3 5", "1 2 3 -5"))), volume, 1e-9 * volume);
}

TEST(ReadText, PutsTheBoreWhereItIs) {
    const TopoDS_Shape body = ReadOne(WithSigns(false, false, false));
    int bores = 0;
    for (TopExp_Explorer face(body, TopAbs_FACE); face.More(); face.Next()) {
        const auto surface =
            Handle(Geom_CylindricalSurface)::DownCast(BRep_Tool::Surface(TopoDS::Face(face.Current())));
        if (surface.IsNull()) continue;
        ++bores;
        EXPECT_EQ(surface->Radius(), 5);
        EXPECT_EQ(surface->Location().X(), 30);
        EXPECT_EQ(surface->Location().Y(), 40);
        EXPECT_EQ(std::abs(surface->Axis().Direction().Z()), 1);
    }
    EXPECT_EQ(bores, 1);
}

TEST(ReadText, AppliesScaleOfTheTransformButNotOfTheHead) {
    std::string text = Placed(DrilledPanel(), "1 0 0 0 1 0 0 0 1 7 0 0 2.5 no_rotate no_reflect no_shear");
    text = Replaced(text, "\n1 9.99", "\n25.4 9.99");
    const TopoDS_Shape body = ReadOne(text);
    EXPECT_NEAR(Volume(body), drilledVolume * 2.5 * 2.5 * 2.5, 1e-9 * drilledVolume * 16);
    EXPECT_EQ(Corners(body).front().X(), 7);
    EXPECT_EQ(Corners(body).back().X(), 257);
    EXPECT_EQ(ReadText(text).header.millimetresPerUnit, 25.4);
}

TEST(ReadText, AHeadWhoseUnitIsNoNumberIsRemembered) {
    for (const std::string unit : {"nan", "abc"}) {
        const std::string text = Replaced(Placed(DrilledPanel(),
                                                 "1 0 0 0 1 0 0 0 1 0 0 0 1 no_rotate "
                                                 "no_reflect no_shear"),
                                          "\n1 9.99", "\n" + unit + " 9.99");
        EXPECT_EQ(ReadText(text).header.unreadableUnit, unit);
        EXPECT_EQ(ReadText(text).bodies.size(), 1U);
    }
}

TEST(ReadText, CountsOfTheHeadThatContradictTheTextAreTold) {
    std::string text;
    for (const std::string& line : WriteText(DrilledPanel())) text += line + "\n";
    EXPECT_TRUE(ReadText(text).problems.empty());
    std::istringstream head(text);
    std::string version, records, bodies;
    head >> version >> records >> bodies;
    const std::string behind = text.substr(text.find(" " + bodies + " ") + 2 + bodies.size());
    const auto told = [&](const std::string& counts) {
        const ReadResult read = ReadText(version + " " + counts + " " + behind);
        EXPECT_EQ(read.bodies.size(), 1U);
        EXPECT_EQ(read.problems.size(), 1U) << counts;
        return read.problems.empty() ? Problem() : read.problems.front();
    };
    EXPECT_TRUE(told(records + " 2").lost);
    EXPECT_EQ(told(records + " 2").text, "the head counts 2 bodies, found 1");
    EXPECT_FALSE(told(records + " 0").lost);
    EXPECT_EQ(told(records + " 0").text, "the head counts 0 bodies, found 1: all of them are read");
    EXPECT_FALSE(told("5 1").lost);
}

TEST(ReadText, AppliesReflection) {
    const TopoDS_Shape cone = BRepPrimAPI_MakeCone(10, 4, 30).Shape();
    for (const TopoDS_Shape& shape : {DrilledPanel(), cone}) {
        const TopoDS_Shape body =
            ReadOne(Placed(shape, "-1 0 0 0 1 0 0 0 1 0 0 0 1 no_rotate reflect no_shear"));
        const double volume = Volume(shape);
        EXPECT_NEAR(Volume(body), volume, 1e-9 * volume);
    }
    const TopoDS_Shape turned =
        ReadOne(Placed(DrilledPanel(), "0 1 0 1 0 0 0 0 1 0 0 0 1 rotate reflect no_shear"));
    EXPECT_EQ(Corners(turned).back().X(), 80);
    EXPECT_EQ(Corners(turned).back().Y(), 100);
}

TEST(ReadText, ATransformWhoseMarksContradictItsNumbersIsTold) {
    const auto told = [](const std::string& transform) {
        const ReadResult read = ReadText(Placed(DrilledPanel(), transform));
        EXPECT_EQ(read.bodies.size(), 1U) << transform;
        std::string all;
        for (const Problem& problem : read.problems)
            all += problem.text + (problem.lost ? "\n" : " (kept)\n");
        return all;
    };
    const std::string mirrored = "-1 0 0 0 1 0 0 0 1 0 0 0 1 ", moved = "1 0 0 0 1 0 0 0 1 5 0 0 1 ";
    EXPECT_EQ(
        told(mirrored + "no_rotate no_reflect no_shear"),
        "transform: its numbers mirror the body, and its mark says that they don't: it may be damaged\n");
    EXPECT_EQ(
        told(moved + "no_rotate reflect no_shear"),
        "transform: its mark says that it mirrors the body, and its numbers don't: it may be damaged\n");
    EXPECT_EQ(told(moved + "no_rotate no_rfflect no_shear"),
              "transform: its mark 'no_rfflect' is none that there is: it may be damaged\n");
    // Two mirrors are none.
    EXPECT_EQ(told("-1 0 0 0 1 0 0 0 1 0 0 0 -1 rotate no_reflect no_shear"), "");
}

TEST(ReadText, LeavesNoRoundingNoiseInAQuarterTurn) {
    const std::string quarter =
        "6.123233995736766e-17 1 0 -1 6.123233995736766e-17 0 0 0 1 0 0 0 1 rotate no_reflect no_shear";
    for (const gp_Pnt& corner : Corners(ReadOne(Placed(DrilledPanel(), quarter)))) {
        EXPECT_TRUE(corner.X() == 0 || corner.X() == -80) << corner.X();
        EXPECT_TRUE(corner.Y() == 0 || corner.Y() == 100) << corner.Y();
    }
}

TEST(ReadText, RefusesAShearedTransform) {
    ExpectRefused(Placed(DrilledPanel(), "1 0.5 0 0 1 0 0 0 1 0 0 0 1 rotate no_reflect shear"), "sheared");
}

TEST(ReadText, RefusesOtherVersionsByTheirNumber) {
    const std::string text = Joined(WriteText(DrilledPanel()));
    for (const char* version : {"104", "22400", "20799", "9999"})
        ExpectRefused(Replaced(text, "400 ", std::string(version) + " "), std::string("version ") + version);
}

TEST(ReadText, RefusesFreeRecordsWithoutSplinesByName) {
    std::string text = Joined(WriteText(DrilledPanel()));
    ExpectRefused(Replaced(text, "cone-surface", "spline-surface"), "spline-surface");
    ExpectRefused(Replaced(text, "ellipse-curve", "intcurve-curve"), "intcurve-curve");
}

TEST(ReadText, TakesRecordsOverManyLinesAndLineEndsOfAnyKind) {
    std::string text = Joined(WriteText(DrilledPanel()));
    std::string broken;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool head = std::count(text.begin(), text.begin() + static_cast<long>(i), '\n') < 3;
        if (text[i] == ' ' && !head && text[i + 1] != '#')
            broken += "\n";
        else
            broken += text[i];
    }
    EXPECT_NEAR(Volume(ReadOne(broken)), drilledVolume, 1e-9 * drilledVolume);
    std::string returns;
    for (const char c : text) returns += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_NEAR(Volume(ReadOne(returns)), drilledVolume, 1e-9 * drilledVolume);
}

TEST(ReadText, TakesRecordsThatFollowWithoutABlank) {
    std::string text = Joined(WriteText(DrilledPanel()));
    for (std::size_t at = text.find("#\n"); at != std::string::npos; at = text.find("#\n", at + 1))
        if (text.compare(at + 2, 3, "End") != 0) text.erase(at + 1, 1);
    EXPECT_NEAR(Volume(ReadOne(text)), drilledVolume, 1e-9 * drilledVolume);
}

TEST(ReadText, CountsAttributesOfAnyContent) {
    // A string in an early attribute holds blanks, a mark and what looks like a number.
    std::vector<std::string> lines = WriteText(BRepPrimAPI_MakeBox(1.0, 2.0, 3.0).Shape());
    lines[0] = "400 0 1 0";
    lines.insert(lines.end() - 1, "name-shop-attrib $-1 $-1 $-1 $0 14 side # left 12 #");
    lines.insert(lines.end() - 1, "strange_thing $-1 { 1 2 { 3 } } #");
    const ReadResult result = ReadText(Joined(lines));
    EXPECT_TRUE(result.problems.empty()) << Told(result);
    EXPECT_EQ(result.recordCount, lines.size() - 4);
    ASSERT_EQ(result.bodies.size(), 1u);
}

TEST(ReadText, TakesCountedStringsWhole) {
    std::string text =
        "700 0 1 0\n@7 Brenvik @4 ACIS @0  \n1 1e-6 1e-10\n"
        "name-attrib $-1 -1 $-1 $-1 $1 @9 # left\n #x #\n"
        "body $0 -1 $-1 $2 $-1 $-1 #\nlump $-1 -1 $-1 $-1 $3 $1 #\n"
        "shell $-1 -1 $-1 $-1 $-1 $4 $-1 $2 #\n"
        "face $-1 -1 $-1 $-1 $-1 $3 $-1 $5 forward single #\n"
        "sphere-surface $-1 -1 $-1 0 0 0 3 1 0 0 0 0 1 forward_v I I I I #\nEnd-of-ACIS-data\n";
    const ReadResult result = ReadText(text);
    EXPECT_TRUE(result.problems.empty()) << Told(result);
    ASSERT_EQ(result.bodies.size(), 1u);
    EXPECT_NEAR(Volume(result.bodies.front()), 36 * pi, 1e-9);
    EXPECT_EQ(result.header.product, "Brenvik");
    EXPECT_EQ(result.header.modeller, "ACIS");
    EXPECT_EQ(result.header.date, "");
}

TEST(ReadText, TakesNumberedRecords) {
    std::vector<std::string> lines = WriteText(DrilledPanel());
    for (std::size_t i = 3; i + 1 < lines.size(); ++i)
        lines[i] = "-" + std::to_string(i - 3) + " " + lines[i];
    EXPECT_NEAR(Volume(ReadOne(Joined(lines))), drilledVolume, 1e-9 * drilledVolume);
}

TEST(ReadText, TakesATextThatEndsWithoutAMarkWhenItsRecordsAreCounted) {
    std::vector<std::string> lines = WriteText(DrilledPanel());
    lines.pop_back();
    EXPECT_NEAR(Volume(ReadOne(Joined(lines))), drilledVolume, 1e-9 * drilledVolume);
}

TEST(ReadText, TellsWhatStandsBehindTheEndMark) {
    const std::string text = Joined(WriteText(DrilledPanel()));
    EXPECT_TRUE(ReadText(text + " \r\n\x1A").problems.empty());
    const ReadResult result = ReadText(text + "\n" + text);
    EXPECT_EQ(result.bodies.size(), 1u);
    ASSERT_EQ(result.problems.size(), 1u) << Told(result);
    EXPECT_EQ(result.problems.front().text, "what stands behind the end mark is left out");
    EXPECT_EQ(result.problems.front().line,
              static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 2);
}

TEST(ReadText, TellsAShellThatIsNotClosed) {
    std::string text = Joined(WriteText(BRepPrimAPI_MakeBox(1.0, 2.0, 3.0).Shape()));
    // The first face leads past the second.
    const std::size_t first = text.find("\nface $-1 $");
    const std::size_t next = std::stoul(text.substr(first + 11));
    const ReadResult result = ReadText(
        Replaced(text, "face $-1 $" + std::to_string(next), "face $-1 $" + std::to_string(next + 1)));
    ASSERT_EQ(result.bodies.size(), 1u) << Told(result);
    EXPECT_EQ(Count(result.bodies.front(), TopAbs_SOLID), 0);
    EXPECT_NE(Told(result).find("not closed"), std::string::npos) << Told(result);
}

TEST(ReadText, KeepsWholeBodiesBesideADamagedOne) {
    const auto text = Sample("sat/meshkit__cylcube.sat");
    if (!text) GTEST_SKIP() << "sample file is absent";
    const ReadResult result = ReadText(Replaced(*text, "cone-surface", "odd-surface"));
    ASSERT_EQ(result.bodies.size(), 1u);
    EXPECT_NEAR(Volume(result.bodies.front()), 1000, 1e-6);
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_NE(result.problems.front().text.find("odd-surface"), std::string::npos);
    EXPECT_GT(result.problems.front().line, 3u);
    EXPECT_GE(result.problems.front().record, 0);
}

TEST(ReadText, TellsEveryPlaceAtWhichATextBreaksOff) {
    const std::vector<std::string> lines = WriteText(DrilledPanel());
    std::string text;
    for (std::size_t i = 0; i + 2 < lines.size(); ++i) {
        const ReadResult result = ReadText(text);
        EXPECT_FALSE(result.problems.empty()) << "after line " << i;
        EXPECT_TRUE(result.bodies.empty()) << "after line " << i;
        if (result.problems.empty()) continue;
        EXPECT_LE(result.problems.front().line, i + 2) << "after line " << i;
        text += lines[i] + "\n";
    }
}

TEST(ReadText, TellsABreakWithinARecordWithLineAndRecord) {
    const std::vector<std::string> lines = WriteText(DrilledPanel());
    for (std::size_t i = 3; i + 1 < lines.size(); ++i) {
        std::string text =
            Joined(std::vector<std::string>(lines.begin(), lines.begin() + static_cast<long>(i)));
        text += lines[i].substr(0, lines[i].size() - 2);
        const ReadResult result = ReadText(text);
        ASSERT_FALSE(result.problems.empty());
        EXPECT_EQ(result.problems.front().line, i + 1);
        EXPECT_EQ(result.problems.front().record, static_cast<long>(i) - 3);
        EXPECT_NE(result.problems.front().text.find("breaks off"), std::string::npos);
    }
}

TEST(ReadText, SurvivesEveryPrefixOfAText) {
    const std::string text = Joined(WriteText(BRepPrimAPI_MakeCone(10, 0, 30).Shape()));
    for (std::size_t length = 0; length + 20 < text.size(); ++length)
        EXPECT_FALSE(ReadText(text.substr(0, length)).problems.empty()) << "after " << length;
}

TEST(ReadText, RefusesNumbersThatAreNone) {
    const std::string text = Joined(WriteText(DrilledPanel()));
    for (const char* number : {"nan", "inf", "-inf", "1e999", "1e30", "0x10", "1,5"}) {
        const ReadResult result =
            ReadText(Replaced(text, "point $-1 0 0 18", std::string("point $-1 0 0 ") + number));
        EXPECT_TRUE(result.bodies.empty()) << number;
        EXPECT_FALSE(result.problems.empty()) << number;
    }
}

TEST(ReadText, EndsOnChainsThatRunInCircles) {
    const std::vector<std::string> lines = WriteText(DrilledPanel());
    // Every pointer of every record in turn leads to every tenth record.
    for (std::size_t i = 3; i + 1 < lines.size(); ++i) {
        for (std::size_t at = lines[i].find('$'); at != std::string::npos; at = lines[i].find('$', at + 1)) {
            for (std::size_t target = 0; target < lines.size(); target += 10) {
                std::vector<std::string> bent = lines;
                bent[i].replace(at, lines[i].find(' ', at) - at, "$" + std::to_string(target));
                ReadText(Joined(bent));
            }
        }
    }
}

TEST(ReadText, EndsWhenManyBodiesLeadThroughTheSameRecords) {
    std::vector<std::string> lines = WriteText(DrilledPanel());
    lines[0] = "400 0 1 0";
    for (int i = 0; i < 20000; ++i) lines.insert(lines.end() - 1, "body $-1 $1 $-1 $-1 #");
    const ReadResult result = ReadText(Joined(lines));
    EXPECT_FALSE(result.bodies.empty());
    EXPECT_NE(Told(result).find("too many bodies"), std::string::npos);
}

TEST(ReadText, SurvivesDamagedBytes) {
    std::mt19937 random(12345);
    const std::string texts[] = {Joined(WriteText(DrilledPanel())),
                                 Joined(WriteText(BRepPrimAPI_MakeTorus(50, 10, 1.0).Shape())),
                                 Joined(WriteText(BRepPrimAPI_MakeSphere(10, 0.3, 1.0, 2.0).Shape()))};
    const std::string bytes = "$#- 0123456789.eEIFx@\n\0\xff";
    for (int round = 0; round < 1500; ++round) {
        std::string text = texts[static_cast<std::size_t>(round) % std::size(texts)];
        const int changes = 1 + static_cast<int>(random() % 4);
        for (int i = 0; i < changes; ++i) text[random() % text.size()] = bytes[random() % bytes.size()];
        ReadText(text);
    }
}

TEST(ReadText, TellsThatANonsenseTextIsNone) {
    for (const char* text :
         {"", "\n\n\n", "hello", "400", "400 0", "400 0 1 0\n", "400 0 1 0\nx\ny\n", "0 SECTION"}) {
        const ReadResult result = ReadText(text);
        EXPECT_TRUE(result.bodies.empty()) << text;
        EXPECT_FALSE(result.problems.empty()) << text;
    }
}

TEST(ReadText, ReadsAPanelOfAHundredHolesFast) {
    TopoDS_Shape panel = BRepPrimAPI_MakeBox(1000.0, 1000.0, 18.0).Shape();
    TopTools_ListOfShape tools;
    TopTools_ListOfShape arguments;
    arguments.Append(panel);
    for (int i = 0; i < 100; ++i) {
        const gp_Ax2 at(gp_Pnt(50 + 100 * (i % 10), 50 + 100 * (i / 10), -1), gp_Dir(0, 0, 1));
        tools.Append(BRepPrimAPI_MakeCylinder(at, 5, 20).Shape());
    }
    BRepAlgoAPI_Cut cut;
    cut.SetArguments(arguments);
    cut.SetTools(tools);
    cut.Build();
    const std::string text = Joined(WriteText(cut.Shape()));
    double fastest = 1e9;
    for (int round = 0; round < 5; ++round) {
        const auto begin = std::chrono::steady_clock::now();
        const ReadResult result = ReadText(text);
        const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - begin;
        fastest = std::min(fastest, spent.count());
        ASSERT_EQ(result.bodies.size(), 1u);
    }
    const double volume = 18e6 - 100 * 25 * pi * 18;
    EXPECT_NEAR(Volume(ReadOne(text)), volume, 1e-9 * volume);
    RecordProperty("milliseconds", std::to_string(fastest));
    std::printf("a panel of a hundred holes: %.2f ms\n", fastest);
}

}  // namespace
}  // namespace brenvik::acis::testing
