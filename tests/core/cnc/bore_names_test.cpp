// What each target calls a bore in each of the four edges.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "cnc/part/run_state.h"
#include "cnc/targets/bore_rules.h"

namespace brenvik {
namespace {

std::array<std::string, 4> Names(Target target, int scale, const BoreCut& cut) {
    RunState run;
    run.target = target;
    run.part.ExportScaleSetting = scale;
    std::array<std::string, 4> names;
    for (std::size_t i = 0; i < names.size(); ++i) names[i] = BoreLayerName(run, Sides()[i], cut);
    return names;
}

using Four = std::array<std::string, 4>;

struct BoreCase {
    Target target;
    Four names;  // Front, back, left, right.
};

TEST(BoreNames, InInches) {
    const BoreCut cut{.diameter = 0.3125, .depth = 1.5, .height = 0.375};
    const Four numbered{"HF_Tp3125_D1p5", "HB_Tp3125_D1p5", "HL_Tp3125_D1p5", "HR_Tp3125_D1p5"};
    const auto cases = std::to_array<BoreCase>({
        {Target::C2C, {"HF_T", "HB_T", "HL_T", "HR_T"}},
        {Target::ATP, numbered},
        {Target::Enroute, numbered},
        {Target::RCIM, numbered},
        {Target::ABC, numbered},
        {Target::THERM, {"hbore p3125 1p5", "hbore p3125 1p5", "hbore p3125 1p5", "hbore p3125 1p5"}},
        {Target::BW, {"TCHB2W2D15000", "TCHB2W4D15000", "TCHB2W1D15000", "TCHB2W3D15000"}},
        {Target::ASP, {"FRONTp375", "BACKp375", "LEFTp375", "RIGHTp375"}},
        {Target::CNI, {"FRONTp375", "BACKp375", "LEFTp375", "RIGHTp375"}},
        {Target::ROV,
         {"SIDEB0_p375_p3125_1p5", "SIDED0_p375_p3125_1p5", "SIDEA0_p375_p3125_1p5",
          "SIDEC0_p375_p3125_1p5"}},
        {Target::WOP4, {"HO_375", "HO_375", "HO_375", "HO_375"}},
        {Target::WOP5, {"H_Drill__375", "H_Drill__375", "H_Drill__375", "H_Drill__375"}},
    });
    for (const BoreCase& each : cases)
        EXPECT_EQ(Names(each.target, 1, cut), each.names) << static_cast<int>(each.target);
}

TEST(BoreNames, InMillimetres) {
    const BoreCut cut{.diameter = 8, .depth = 30.256, .height = 9.525};
    EXPECT_EQ(Names(Target::ATP, 2, cut)[0], "HF_T8_D30p256");
    EXPECT_EQ(Names(Target::BW, 2, cut)[0], "TCHB2W2D3026");
    EXPECT_EQ(Names(Target::CNI, 2, cut)[1], "BACK9p52");
    EXPECT_EQ(Names(Target::ROV, 3, cut)[3], "SIDEC0_9p52_8_30p26");
    EXPECT_EQ(Names(Target::WOP4, 2, cut)[0], "HO9_52");
}

TEST(BoreNames, NumbersOfKeptCirclesStandAsTheyAre) {
    EXPECT_EQ(Names(Target::ATP, 4, {1.0 / 128, 30 / 25.4, 0})[0], "HF_Tp0078125_D1p18110236220472");
    EXPECT_EQ(Names(Target::THERM, 4, {0.25, 30 / 25.4, 0})[0], "hbore p25 1p18110236220472");
}

TEST(BoreNames, ANumberIsFreeOfTheModellersNoise) {
    EXPECT_EQ(Names(Target::ATP, 2, {8.00000000000002, 29.9999999999998, 9})[0], "HF_T8_D30");
}

TEST(BoreNames, AnUnknownScaleLeavesTheNumberOut) {
    const BoreCut cut{8, 30, 9};
    EXPECT_EQ(Names(Target::BW, 0, cut)[0], "TCHB2W2D");
    EXPECT_EQ(Names(Target::ASP, 0, cut)[0], "FRONT");
    EXPECT_EQ(Names(Target::ROV, 7, cut)[2], "SIDEA0___");
}

TEST(BoreNames, WorkedExample) { EXPECT_EQ(Names(Target::ROV, 1, {0.25, 1, 0.375})[2], "SIDEA0_p375_p25_1"); }

}  // namespace
}  // namespace brenvik
