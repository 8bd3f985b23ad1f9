// What each target calls a vertical hole, what depth it takes, and what stays on the circle.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "cnc/part/run_state.h"
#include "cnc/targets/hole_rules.h"

namespace brenvik {
namespace {

RunState RunFor(Target target, int scale) {
    RunState run;
    run.target = target;
    run.part.ExportScaleSetting = scale;
    return run;
}

struct Named {
    std::string layer;
    double thickness = 0;
};

Named Name(const RunState& run, HoleStart start, const HoleHeights& heights, double diameter, double spoil) {
    HoleCut cut = CutOf(run, start, heights, spoil);
    cut.diameter = diameter;
    cut.circleZ = heights.top;
    return {HoleLayerName(run, cut), HoleThickness(run, cut)};
}

struct HoleCase {
    Target target;
    const char *through, *blind, *recessThrough, *recessBlind;
    double throughThickness, blindThickness;
};

// Inches: 0.75 thick, holes of 0.375, blind ones 0.5 deep, spoil 0.0625.
TEST(DrillNames, InInches) {
    const auto cases = std::to_array<HoleCase>({
        {Target::C2C, "VD_Zp8125_T_Dp375", "VD_Zp5_T_Dp375", "VD_Zp8125_T_Dp375", "VD_Zp5_T_Dp375", -0.8125,
         -0.5},
        {Target::ATP, "VD_Zp8125_T_Dp375", "VD_Zp5_T_Dp375", "VD_Tp375_Dp8125", "VD_Tp375_Dp5", -0.8125,
         -0.5},
        {Target::ABC, "VD_Z_T_Dp375", "VD_Z_T_Dp375", "VD_Z_T_Dp375", "VD_Z_T_Dp375", -0.8125, -0.5},
        {Target::Enroute, "VD_Z_T_Dp375", "VD_Z_T_Dp375", "VD_Z_T_Dp375", "VD_Z_T_Dp375", -0.75, -0.5},
        {Target::RCIM, "VD_Z_T_Dp375", "VD_Z_T_Dp375", "VD_Z_T_Dp375", "VD_Z_T_Dp375", -0.75, -0.5},
        {Target::THERM, "drill z0p75", "drill z0p5", "drill z0p75", "drill z0p5", -0.75, -0.5},
        {Target::ASP, "0", "0", "0", "0", -0.75, -0.5},
        {Target::CNI, "VERTICALp8125", "VERTICALp5", "VERTICALp8125", "VERTICALp5", 0, 0},
        {Target::ROV, "VERTp8125", "VERTp5", "VERTp8125", "VERTp5", 0, 0},
        {Target::WOP4, "ZD_8125", "ZF_5", "ZD_8125", "ZD_5", 0, 0},
        {Target::WOP5, "V_DrillSFS", "V_DrillSF__5", "V_DrillSFS", "V_DrillSFS", 0, 0},
        {Target::BW, "TCHB2W0D8125", "TCHB2W0D5000", "TCHB2W0D8125", "TCHB2W0D5000", 0, 0},
    });
    for (const HoleCase& each : cases) {
        SCOPED_TRACE(static_cast<int>(each.target));
        const RunState run = RunFor(each.target, 1);
        const HoleHeights through{0.75, 0, 0.75}, blind{0.75, 0.25, 0.75};
        const Named a = Name(run, HoleStart::TopFace, through, 0.375, 0.0625);
        EXPECT_EQ(a.layer, each.through);
        EXPECT_EQ(a.thickness, each.throughThickness);
        const Named b = Name(run, HoleStart::TopFace, blind, 0.375, 0.0625);
        EXPECT_EQ(b.layer, each.blind);
        EXPECT_EQ(b.thickness, each.blindThickness);
        EXPECT_EQ(Name(run, HoleStart::Recess, through, 0.375, 0.0625).layer, each.recessThrough);
        EXPECT_EQ(Name(run, HoleStart::Recess, blind, 0.375, 0.0625).layer, each.recessBlind);
    }
}

// Millimetres: 19 thick, holes of 8, blind ones 12.346 deep, spoil 0.5.
TEST(DrillNames, InMillimetres) {
    const auto cases = std::to_array<HoleCase>({
        {Target::C2C, "VD_Z19p5_T_D8", "VD_Z12p346_T_D8", "VD_Z19p5_T_D8", "VD_Z12p346_T_D8", -19.5, -12.346},
        {Target::THERM, "drill z19", "drill z12p35", "drill z19", "drill z12p35", -19, -12.346},
        {Target::CNI, "VERTICAL19p5", "VERTICAL12p35", "VERTICAL19p5", "VERTICAL12p35", 0, 0},
        // The floor is rounded to 2 decimals before the depth is taken.
        {Target::ROV, "VERT19p5", "VERT12p35", "VERT19p5", "VERT12p35", 0, 0},
        {Target::WOP4, "ZD19_5", "ZF12_346", "ZD19_5", "ZD12_346", 0, 0},
        {Target::WOP5, "V_DrillSFS", "V_DrillSF_12_346", "V_DrillSFS", "V_DrillSFS", 0, 0},
        {Target::BW, "TCHB2W0D1950", "TCHB2W0D1235", "TCHB2W0D1950", "TCHB2W0D1235", 0, 0},
    });
    for (const HoleCase& each : cases) {
        SCOPED_TRACE(static_cast<int>(each.target));
        const RunState run = RunFor(each.target, 2);
        const HoleHeights through{19, 0, 19}, blind{19, 6.654, 19};
        const Named a = Name(run, HoleStart::TopFace, through, 8, 0.5);
        EXPECT_EQ(a.layer, each.through);
        EXPECT_EQ(a.thickness, each.throughThickness);
        const Named b = Name(run, HoleStart::TopFace, blind, 8, 0.5);
        EXPECT_EQ(b.layer, each.blind);
        EXPECT_EQ(b.thickness, each.blindThickness);
        EXPECT_EQ(Name(run, HoleStart::Recess, through, 8, 0.5).layer, each.recessThrough);
        EXPECT_EQ(Name(run, HoleStart::Recess, blind, 8, 0.5).layer, each.recessBlind);
    }
}

TEST(DrillNames, DepthIsTakenFromHeightsThatAreRoundedFirst) {
    const HoleHeights heights{18.0049, 5.1251, 18.0049};
    EXPECT_EQ(CutOf(RunFor(Target::C2C, 2), HoleStart::TopFace, heights, 0).depth, 12.8798);
    EXPECT_EQ(CutOf(RunFor(Target::ROV, 2), HoleStart::TopFace, heights, 0).depth, 12.87);
    EXPECT_EQ(CutOf(RunFor(Target::ROV, 1), HoleStart::TopFace, heights, 0).depth, 12.8798);
    EXPECT_EQ(CutOf(RunFor(Target::ROV, 2), HoleStart::Recess, heights, 0).depth, 12.8798);
}

TEST(DrillNames, AThicknessOfSixDecimalsIsDrilledThroughByFullHeight) {
    const HoleHeights heights{0.734375, 0, 0.734375};  // 47/64
    for (const HoleStart start : {HoleStart::TopFace, HoleStart::Recess})
        EXPECT_TRUE(CutOf(RunFor(Target::BW, 1), start, heights, 0).through);
    EXPECT_TRUE(CutOf(RunFor(Target::WOP4, 1), HoleStart::TopFace, heights, 0).through);
}

TEST(DrillNames, BlindHolesGetNoSpoil) {
    EXPECT_EQ(CutOf(RunFor(Target::C2C, 2), HoleStart::TopFace, {19, 5, 19}, 0.5).drilled, 14);
    EXPECT_EQ(CutOf(RunFor(Target::BW, 2), HoleStart::TopFace, {19, 5, 19}, 0.5).drilled, 14);
}

TEST(DrillNames, ThermNamesTheSecondSideByTheHeightOfTheCircle) {
    RunState run = RunFor(Target::THERM, 2);
    run.part.SecondSidePass = true;
    EXPECT_EQ(Name(run, HoleStart::TopFace, {19, 9, 19}, 8, 0).layer, "drill z19");
    run = RunFor(Target::THERM, 1);
    run.part.SecondSidePass = true;
    EXPECT_EQ(Name(run, HoleStart::TopFace, {0.75, 0.25, 0.75}, 0.375, 0).layer, "drill z0p75");
}

TEST(DrillNames, AnUnknownScaleLeavesTheNumberOut) {
    const HoleHeights heights{19, 9, 19};
    const auto name = [&](Target target) {
        return Name(RunFor(target, 0), HoleStart::TopFace, heights, 8, 0).layer;
    };
    EXPECT_EQ(name(Target::CNI), "VERTICAL");
    EXPECT_EQ(name(Target::ROV), "VERT");
    EXPECT_EQ(name(Target::WOP4), "ZF");
    EXPECT_EQ(name(Target::WOP5), "V_DrillSF_");
    EXPECT_EQ(name(Target::BW), "TCHB2W0D");
    EXPECT_EQ(name(Target::C2C), "VD_Z10_T_D8");
}

TEST(DrillNames, WorkedExamples) {
    EXPECT_EQ(Name(RunFor(Target::C2C, 1), HoleStart::TopFace, {0.75, 0, 0.75}, 0.375, 0).layer,
              "VD_Zp75_T_Dp375");
    EXPECT_EQ(Name(RunFor(Target::ABC, 1), HoleStart::TopFace, {0.75, 0, 0.75}, 0.375, 0).layer,
              "VD_Z_T_Dp375");
    EXPECT_EQ(Name(RunFor(Target::BW, 1), HoleStart::TopFace, {0.75, 0, 0.75}, 0.375, 0).layer,
              "TCHB2W0D7500");
}

}  // namespace
}  // namespace brenvik
