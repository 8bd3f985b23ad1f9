// Binary data give the same bodies as text, whole or damaged.
#include "free_shapes.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>

#include <random>

#include "drafting_host/acis/body_middle.h"
#include "support/binary_acis.h"

namespace brenvik::acis::testing {
namespace {

using test::BinaryAcis;

std::vector<TopoDS_Shape> Shapes() {
    const TopoDS_Shape cone = BRepPrimAPI_MakeCone(8, 3, 12).Shape();
    return {CamFitting(),
            Crossed(12, 3),
            CutCountersink(),
            Moulding(),
            DrilledMoulding(),
            Vase(),
            cone,
            BRepPrimAPI_MakeSphere(7).Shape(),
            BRepPrimAPI_MakeTorus(9, 2).Shape()};
}

/// All its records stand in a line each, as moving a body in its text needs.
TopoDS_Shape Panel() {
    return Drilled(BRepPrimAPI_MakeBox(100, 80, 18).Shape(), At(30, 20, -1, gp_Dir(0, 0, 1)), 5, 20);
}

void ExpectSame(const TopoDS_Shape& found, const TopoDS_Shape& expected) {
    EXPECT_EQ(Volume(found), Volume(expected));
    EXPECT_EQ(Area(found), Area(expected));
    for (const TopAbs_ShapeEnum kind : {TopAbs_SOLID, TopAbs_FACE, TopAbs_EDGE, TopAbs_VERTEX})
        EXPECT_EQ(Count(found, kind), Count(expected, kind));
}

TEST(BinaryAcisData, GiveTheBodiesThatTheirTextGives) {
    for (const TopoDS_Shape& shape : Shapes()) {
        const std::string text = Joined(WriteText(shape));
        ExpectSame(ReadOne(BinaryAcis(text)), ReadOne(text));
    }
}

TEST(BinaryAcisData, HaveTheMiddleThatTheirTextHas) {
    const std::string moved = " 100 200 300 2 rotate no_reflect no_shear";
    const std::string text = Placed(BRepPrimAPI_MakeBox(10, 20, 40).Shape(), "0 1 0 -1 0 0 0 0 1" + moved);
    for (const std::string& data : {text, BinaryAcis(text)}) {
        const auto middle = MiddleOfBody(data);
        ASSERT_TRUE(middle);
        EXPECT_EQ(middle->place, (std::array<double, 3>{80, 210, 340}));
        EXPECT_TRUE(middle->isCertain);
    }
    EXPECT_FALSE(MiddleOfBody(Placed(Panel(), "0.6 0.8 0 -0.8 0.6 0 0 0 1" + moved))->isCertain);
    EXPECT_FALSE(MiddleOfBody(Joined(WriteText(Panel())))->isCertain);  // it is drilled
    EXPECT_FALSE(MiddleOfBody(Placed(Panel(), "0.6 0.9 0 -0.8 0.6 0 0 0 1" + moved)));
}

TEST(BinaryAcisData, SaveTheirHead) {
    const ReadResult read = ReadText(BinaryAcis(Joined(WriteText(CamFitting()))));
    EXPECT_EQ(read.header.version, 21800);
    EXPECT_EQ(read.header.product, "Brenvik");
    EXPECT_EQ(read.header.millimetresPerUnit, 1);
    EXPECT_EQ(read.header.declaredBodies, 1);
}

TEST(BinaryAcisData, PlaceABodyByItsTransform) {
    const std::string text = Placed(Panel(), "0 1 0 -1 0 0 0 0 1 100 200 300 2 rotate no_reflect no_shear");
    ExpectSame(ReadOne(BinaryAcis(text)), ReadOne(text));
}

// One program puts the fields of a transform into one string.
TEST(BinaryAcisData, TakeATransformInOneString) {
    const std::string fields = "1 0 0 0 1 0 0 0 1 5 6 7 2 no_rotate no_reflect no_shear ";
    std::string binary = BinaryAcis(Placed(Panel(), fields));
    const std::string head("\x0D\x09transform\x0C\xFF\xFF\xFF\xFF\x04\xFF\xFF\xFF\xFF\x0C\xFF\xFF\xFF\xFF",
                           26);
    const std::size_t at = binary.find(head);
    ASSERT_NE(at, std::string::npos);
    const std::size_t numbers = 4 * 25 + 9 + 3;
    std::string asText("\x12");
    asText += static_cast<char>(fields.size());
    asText += std::string(3, '\0') + fields;
    binary.replace(at + head.size(), numbers, asText);
    ExpectSame(ReadOne(binary), ReadOne(Placed(Panel(), fields)));
}

TEST(BinaryAcisData, OfWideIntegersAreTheSame) {
    const std::string narrow = BinaryAcis(Joined(WriteText(BRepPrimAPI_MakeBox(3, 2, 1).Shape())));
    std::string wide = "ASM BinaryFile8";
    const auto widen = [&](std::size_t at) {
        const char fill = static_cast<unsigned char>(narrow[at + 3]) >= 0x80 ? '\xFF' : '\0';
        wide += narrow.substr(at, 4) + std::string(4, fill);
    };
    for (std::size_t at = 15; at < 31; at += 4) widen(at);
    for (std::size_t at = 31; at < narrow.size();) {
        const char tag = narrow[at];
        wide += tag;
        ++at;
        std::size_t length = 0;
        if (tag == 0x04 || tag == 0x0C || tag == 0x15) {
            widen(at);
            at += 4;
        } else if (tag == 0x06) {
            length = 8;
        } else if (tag == 0x13 || tag == 0x14) {
            length = 24;
        } else if (tag == 0x07 || tag == 0x0D || tag == 0x0E) {
            length = 1U + static_cast<unsigned char>(narrow[at]);
        }
        wide += narrow.substr(at, length);
        at += length;
    }
    EXPECT_NEAR(Volume(ReadOne(wide)), 6, 1e-12);
}

void ExpectRefused(const std::string& data, const std::string& told) {
    const ReadResult result = ReadText(data);
    EXPECT_TRUE(result.bodies.empty());
    ASSERT_FALSE(result.problems.empty());
    EXPECT_NE(result.problems.front().text.find(told), std::string::npos) << result.problems.front().text;
}

TEST(BinaryAcisData, OfOtherVersionsAreRefusedWithTheWayOut) {
    std::string binary = BinaryAcis(Joined(WriteText(CamFitting())));
    for (const int version : {104, 20799, 22400}) {
        std::memcpy(binary.data() + 15, &version, sizeof version);
        ExpectRefused(binary, "version " + std::to_string(version));
        ExpectRefused(binary, "save the drawing as DXF of release 2010, or the solids as STEP");
    }
    ExpectRefused("ACIS BinaryFile", "break off");
    ExpectRefused(std::string("ASM BinaryFile4abcabcabcabcabcabcabc"), "version");
}

TEST(BinaryAcisData, TellWhereTheyBreakOffAtEachOf200Places) {
    const std::string binary = BinaryAcis(Joined(WriteText(CamFitting())));
    for (std::size_t i = 1; i < 200; ++i) {
        const ReadResult result = ReadText(binary.substr(0, i * binary.size() / 200));
        ASSERT_FALSE(result.problems.empty()) << "cut at " << i * binary.size() / 200;
        const std::string& told = result.problems.front().text;
        EXPECT_TRUE(told.find("byte") != std::string::npos ||
                    told.find("break off after") != std::string::npos)
            << told;
    }
}

TEST(BinaryAcisData, WithRandomBytesChangedNeitherCrashNorHang) {
    std::mt19937 random(7);
    const std::string sound[] = {BinaryAcis(Joined(WriteText(CamFitting()))),
                                 BinaryAcis(Joined(WriteText(Vase())))};
    for (int i = 0; i < 1000; ++i) {
        std::string binary = sound[i % 2];
        for (int k = 0; k < 2; ++k) binary[random() % binary.size()] = static_cast<char>(random());
        ReadText(binary);
    }
}

TEST(BinaryAcisData, WithAbsurdCountsAreRefusedAtOnce) {
    const std::string sound = BinaryAcis(Joined(WriteText(Vase())));
    // A string of 4 GB, a name longer than the data, records and poles by the thousand million.
    ExpectRefused(sound.substr(0, 31) + "\x12\xFF\xFF\xFF\xFF" + sound.substr(31), "head");
    std::string counted = sound;
    const std::int32_t many = 2000000000;
    std::memcpy(counted.data() + 19, &many, sizeof many);
    EXPECT_EQ(ReadText(counted).bodies.size(), 1U);
    std::string poles = sound;
    const std::size_t spline = poles.find("nubs");
    const std::size_t rational = poles.find("nurbs");
    const std::size_t word = std::min(spline, rational);
    ASSERT_NE(word, std::string::npos);
    for (std::size_t at = word; at + 5 < poles.size() && at < word + 60; ++at)
        if (poles[at] == 0x04) std::memcpy(poles.data() + at + 1, &many, sizeof many);
    ExpectRefused(poles, "spline");
}

// The drawing of release 2010 holds the same solids as text.
TEST(BinaryAcisSamples, HaveTheBodiesOfTheirTextTwins) {
    const auto text = Sample("dxf/ACadSharp__sample_AC1024_ascii.dxf");
    if (!text) GTEST_SKIP() << "no sample drawings beside the checkout";
    const std::vector<std::string> expected = TextsInDrawing(*text);
    ASSERT_EQ(expected.size(), 3U);
    for (const char* name : {"AC1027", "AC1032"}) {
        const auto drawing = Sample(std::string("dxf/ACadSharp__sample_") + name + "_ascii.dxf");
        ASSERT_TRUE(drawing) << name;
        std::vector<std::string> bodies;
        std::istringstream lines(drawing->substr(drawing->rfind("ACDSDATA")));
        std::string code, value;
        std::getline(lines, value);
        while (std::getline(lines, code) && std::getline(lines, value)) {
            if (!value.empty() && value.back() == '\r') value.pop_back();
            if (std::atoi(code.c_str()) == 94) bodies.emplace_back();
            if (std::atoi(code.c_str()) != 310) continue;
            for (std::size_t at = 0; at + 1 < value.size(); at += 2)
                bodies.back() += static_cast<char>(std::stoi(value.substr(at, 2), nullptr, 16));
        }
        std::erase_if(bodies, [](const std::string& body) { return !IsBinary(body); });
        ASSERT_EQ(bodies.size(), expected.size()) << name;
        std::vector<double> volumes[2];
        for (std::size_t i = 0; i < bodies.size(); ++i) {
            volumes[0].push_back(Area(ReadOne(bodies[i])));
            volumes[1].push_back(Area(ReadOne(expected[i])));
        }
        for (auto& all : volumes) std::sort(all.begin(), all.end());
        for (std::size_t i = 0; i < bodies.size(); ++i) EXPECT_NEAR(volumes[0][i], volumes[1][i], 1e-9);
    }
}

}  // namespace
}  // namespace brenvik::acis::testing
