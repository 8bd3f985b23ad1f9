// What each target calls paths and sheets, for runs in millimetres and in inches.
#include "cnc/targets/target_table.h"

#include <gtest/gtest.h>

#include "cnc/part/run_state.h"

namespace brenvik {
namespace {

RunState RunWith(Target target, int scale, double diameter = 6, std::string direction = "cc") {
    RunState run;
    run.target = target;
    run.part.ExportScaleSetting = scale;
    run.part.RouteCount = 2;
    run.part.bits.ToolNumber = "3";
    run.part.bits.ToolDiameter = diameter;
    run.part.bits.ToolSpeed = "18000";
    run.part.bits.ToolFeed = "300";
    run.part.Material.direction = std::move(direction);
    run.part.Material.tools[0] = {"1", 2 * diameter, "16000", "250"};
    return run;
}

struct Golden {
    Target target;
    std::string_view pocket, circlePocket, through, outline, sheet;
};

// A pocket 10.123456 deep, a circle 10.5 deep, a cut-out and the outline 18.3 deep, a sheet of 18.
constexpr auto Metric = std::to_array<Golden>({
    {Target::C2C, "PKC_Z10p12346_T3_D6_S18000_F300_R_C0_2", "PKS_Z10p5_T3_D6_S18000_F300_R_C0_2",
     "RT_Z18p3_T3_D6_S18000_F300_R_C0_2", "OT_Z18p3_T1_D12_S16000_F250_R_C0", "PL_18"},
    {Target::ATP, "PKC_Z10p12346_T3_D6_S18000_F300", "PKS_Z10p5_T3_D6_S18000_F300",
     "RT_Z18p3_T3_D6_S18000_F300", "OT_Z18p3_T1_D12_S16000_F250", "PL_18"},
    {Target::ROV, "310p12", "310p5", "318p3", "118p3", "PANEL18"},
    {Target::CNI, "ROTOR10p12", "ROTOR10p5", "ROTOR18p3", "ROTOR18p3", "PANEL18"},
    {Target::ASP, "ROTOR10p12", "ROTOR10p5", "ROTOR18p3", "ROTOR18p3", "PANEL18"},
    {Target::WOP4, "FK10_123T3N", "FK10_5T3N", "FK18_3T3N", "FK18_3T1N", "S_18"},
    {Target::WOP5, "V_Trim_10_123T3", "V_Trim_10_5T3", "V_Trim_18_3T3", "V_Trim_18_3T1", "ProcPart_18"},
    {Target::THERM, "pocket 6 10p12", "pocket 6 10p5", "dado 6 18p3", "outline 18p3", ""},
    {Target::BW, "TCHB1W0TCD$3$S18000F300TC2D1012", "TCHB1W0TCD$3$S18000F300TC2D1050",
     "TCHB1W0TCD$3$S18000F300TC2D1830", "TCHB1W0TCD$1$S16000F250TC2D1830", "TCHB8W0D180000"},
    {Target::Enroute, "PKC_Z_T3_D6_S18000_F300", "PKS_Z_T3_D6_S18000_F300", "RT_Z_T3_D6_S18000_F300",
     "OT_Z_T1_D12_S16000_F250", "PL_18"},
    {Target::ABC, "PKC_Z_T3_D6_S18000_F300", "PKS_Z_T3_D6_S18000_F300", "RT_Z_T3_D6_S18000_F300",
     "OT_Z_T1_D12_S16000_F250", ""},
    {Target::RCIM, "PKC_Z_T3_D6_S18000_F300_C0", "PKS_Z_T3_D6_S18000_F300_C0", "RT_Z_T3_D6_S18000_F300_C0",
     "OT_Z_T1_D12_S16000_F250_C0", "PL_18"},
});

// The same in inches: .40001 and .375 deep, .76 through, a sheet of .75, bits of 1/4 and 1/2.
constexpr auto Imperial = std::to_array<Golden>({
    {Target::C2C, "PKC_Zp40001_T3_Dp25_S18000_F300_R_C0_2", "PKS_Zp375_T3_Dp25_S18000_F300_R_C0_2",
     "RT_Zp76_T3_Dp25_S18000_F300_R_C0_2", "OT_Zp76_T1_Dp5_S16000_F250_R_C0", "PL_p75"},
    {Target::ATP, "PKC_Zp40001_T3_Dp25_S18000_F300", "PKS_Zp375_T3_Dp25_S18000_F300",
     "RT_Zp76_T3_Dp25_S18000_F300", "OT_Zp76_T1_Dp5_S16000_F250", "PL_p75"},
    {Target::ROV, "3p4", "3p375", "3p76", "1p76", "PANELp75"},
    {Target::CNI, "ROTORp4", "ROTORp375", "ROTORp76", "ROTORp76", "PANELp75"},
    {Target::ASP, "ROTORp4", "ROTORp375", "ROTORp76", "ROTORp76", "PANELp75"},
    {Target::WOP4, "FK_4T3N", "FK_375T3N", "FK_76T3N", "FK_76T1N", "S__75"},
    {Target::WOP5, "V_Trim__4T3", "V_Trim__375T3", "V_Trim__76T3", "V_Trim__76T1", "ProcPart__75"},
    {Target::THERM, "pocket p25 p4", "pocket p25 p375", "dado p25 p76", "outline p76", ""},
    {Target::BW, "TCHB1W0TCD$3$S18000F300TC2D4000", "TCHB1W0TCD$3$S18000F300TC2D3750",
     "TCHB1W0TCD$3$S18000F300TC2D7600", "TCHB1W0TCD$1$S16000F250TC2D7600", "TCHB8W0D7500"},
    {Target::Enroute, "PKC_Z_T3_Dp25_S18000_F300", "PKS_Z_T3_Dp25_S18000_F300", "RT_Z_T3_Dp25_S18000_F300",
     "OT_Z_T1_Dp5_S16000_F250", "PL_p75"},
    {Target::ABC, "PKC_Z_T3_Dp25_S18000_F300", "PKS_Z_T3_Dp25_S18000_F300", "RT_Z_T3_Dp25_S18000_F300",
     "OT_Z_T1_Dp5_S16000_F250", ""},
    {Target::RCIM, "PKC_Z_T3_Dp25_S18000_F300_C0", "PKS_Z_T3_Dp25_S18000_F300_C0",
     "RT_Z_T3_Dp25_S18000_F300_C0", "OT_Z_T1_Dp5_S16000_F250_C0", "PL_p75"},
});

void ExpectNames(const Golden& golden, const RunState& run, double pocket, double circle, double through,
                 double sheet) {
    SCOPED_TRACE(TraitsOf(golden.target).name);
    EXPECT_EQ(RouteLayerName(run, RouteRole::Inside, PathKind::PKC, pocket), golden.pocket);
    EXPECT_EQ(RouteLayerName(run, RouteRole::CirclePocket, PathKind::PKS, circle), golden.circlePocket);
    EXPECT_EQ(RouteLayerName(run, RouteRole::Through, PathKind::RT, through), golden.through);
    EXPECT_EQ(RouteLayerName(run, RouteRole::Outline, PathKind::RT, through), golden.outline);
    EXPECT_EQ(SheetLayerName(run, sheet), golden.sheet);
}

TEST(TargetTableTest, NamesOfRunsInMillimetres) {
    ASSERT_EQ(Metric.size(), AllTargets.size());
    for (const int scale : {2, 3})
        for (const Golden& golden : Metric)
            ExpectNames(golden, RunWith(golden.target, scale), 10.123456, 10.5, 18.3, 18);
}

TEST(TargetTableTest, NamesOfRunsInInches) {
    ASSERT_EQ(Imperial.size(), AllTargets.size());
    for (const int scale : {1, 4})
        for (const Golden& golden : Imperial)
            ExpectNames(golden, RunWith(golden.target, scale, 0.25), 0.40001, 0.375, 0.76, 0.75);
}

TEST(TargetTableTest, AnUnknownScaleLeavesTheNumberOutWithoutAWord) {
    for (const int scale : {0, 5, -1}) {
        EXPECT_EQ(RouteLayerName(RunWith(Target::CNI, scale), RouteRole::Inside, PathKind::RT, 9), "ROTOR");
        EXPECT_EQ(RouteLayerName(RunWith(Target::WOP4, scale), RouteRole::Inside, PathKind::RT, 9), "FKT3N");
        EXPECT_EQ(RouteLayerName(RunWith(Target::BW, scale), RouteRole::Inside, PathKind::RT, 9),
                  "TCHB1W0TCD$3$S18000F300TC2D");
        EXPECT_EQ(RouteLayerName(RunWith(Target::THERM, scale), RouteRole::Inside, PathKind::RT, 9),
                  "dado 6 ");
        EXPECT_EQ(SheetLayerName(RunWith(Target::ROV, scale), 18), "PANEL");
        EXPECT_EQ(RouteLayerName(RunWith(Target::C2C, scale), RouteRole::Inside, PathKind::RT, 9),
                  "RT_Z9_T3_D6_S18000_F300_R_C0_2");
    }
}

TEST(TargetTableTest, TheWorkedExamplesOfRoutes) {
    RunState run = RunWith(Target::C2C, 1, 0.25);
    run.part.RouteCount = 4;
    EXPECT_EQ(RouteLayerName(run, RouteRole::Inside, PathKind::RT, 0.75),
              "RT_Zp75_T3_Dp25_S18000_F300_R_C0_4");
    EXPECT_EQ(RouteLayerName(RunWith(Target::Enroute, 1, 0.25), RouteRole::Inside, PathKind::RT, 0.75),
              "RT_Z_T3_Dp25_S18000_F300");
    EXPECT_EQ(RouteLayerName(RunWith(Target::RCIM, 1, 0.25), RouteRole::Inside, PathKind::RT, 0.75),
              "RT_Z_T3_Dp25_S18000_F300_C0");
    EXPECT_EQ(WholeNumberText(0.75, 4), "7500");
    EXPECT_EQ(WholeNumberText(0.29, 2), "29");
}

TEST(TargetTableTest, TheDirectionOfTheMaterialIsTheCompensation) {
    EXPECT_EQ(CompensationText(RunWith(Target::C2C, 2, 6, "cc")), "0");
    EXPECT_EQ(CompensationText(RunWith(Target::C2C, 2, 6, "CC")), "0");
    EXPECT_EQ(CompensationText(RunWith(Target::C2C, 2, 6, "C")), "1");
    EXPECT_EQ(RouteLayerName(RunWith(Target::RCIM, 2, 6, "c"), RouteRole::Inside, PathKind::RT, 9),
              "RT_Z_T3_D6_S18000_F300_C1");
}

TEST(TargetTableTest, BWCutsByTheDirectionAndCirclesAlwaysOneWay) {
    const auto name = [](std::string direction, RouteRole role) {
        return RouteLayerName(RunWith(Target::BW, 2, 6, std::move(direction)), role, PathKind::RT, 18.3);
    };
    EXPECT_EQ(name("c", RouteRole::Inside), "TCHB1W0TCD$3$S18000F300TC1D1830");
    EXPECT_EQ(name("Cc", RouteRole::Through), "TCHB1W0TCD$3$S18000F300TC2D1830");
    EXPECT_EQ(name("cc", RouteRole::ThroughCircle), "TCHB1W0TCD$3$S18000F300TC2D1830");
    EXPECT_EQ(name("c", RouteRole::ThroughCircle), "TCHB1W0TCD$3$S18000F300TC2DIR1D1830");
}

TEST(TargetTableTest, ARouteThatStopsInsideIsADadoForTHERM) {
    EXPECT_EQ(RouteLayerName(RunWith(Target::THERM, 2), RouteRole::Inside, PathKind::RT, 9), "dado 6 9");
}

}  // namespace
}  // namespace brenvik
