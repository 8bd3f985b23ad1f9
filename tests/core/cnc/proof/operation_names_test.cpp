// Every name that the tables can make reads back to what it was made from.
#include "cnc/proof/operation_names.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/numbers.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/hole_rules.h"
#include "cnc/targets/target_table.h"

namespace brenvik {
namespace {

constexpr auto Scales = std::to_array<int>({1, 2, 3, 4});
constexpr auto MetricDepths = std::to_array<double>(
    {0.01, 0.5, 0.999, 1, 3.175, 6.35, 9.53, 10.123456, 12, 18.3, 19.05, 25.4, 101.6, 400});
constexpr auto ImperialDepths =
    std::to_array<double>({0.0625, 0.1181, 0.375, 0.40001, 0.75, 0.76, 1, 1.5, 2.25, 12, 31.49606});
constexpr auto Diameters = std::to_array<double>({0.125, 0.25, 2.5, 3.175, 5, 8, 12, 12.7, 35});
const std::vector<std::string> Tools{"1", "3", "12", "123", "T7", "E-4"};

std::span<const double> DepthsOf(int scale) {
    if (scale == 2 || scale == 3) return MetricDepths;
    return ImperialDepths;
}

struct Case {
    RunState run;
    double depth = 0;

    NameContext Context() const { return {run.target, run.Metric(), Tools, depth}; }
};

/// Calls for every target, scale and depth.
template <class Check>
void ForAllDepths(Check&& check) {
    for (const Target target : AllTargets)
        for (const int scale : Scales)
            for (const double depth : DepthsOf(scale)) {
                Case one;
                one.run.target = target;
                one.run.part.ExportScaleSetting = scale;
                one.run.part.Material.direction = "cc";
                one.depth = depth;
                check(one);
            }
}

void UseToolOf(RunState& run, const std::string& tool, double diameter) {
    run.part.bits.ToolNumber = tool;
    run.part.bits.ToolDiameter = diameter;
    run.part.bits.ToolSpeed = "18000";
    run.part.bits.ToolFeed = "300";
    run.part.Material.tools[0] = {tool, diameter, "18000", "300"};
}

/// Within half a step of the last digit.
void ExpectDepth(const OperationName& read, double depth, const std::string& name) {
    if (read.depth) {
        EXPECT_LE(std::abs(*read.depth - depth), read.rounding + 1e-9) << name;
    }
}

bool TellsDepthOfPaths(Target target) {
    return target != Target::Enroute && target != Target::ABC && target != Target::RCIM;
}
bool TellsToolOfPaths(Target target) {
    return target != Target::THERM && target != Target::ASP && target != Target::CNI;
}
bool TellsKindOfPaths(Target target) { return TraitsOf(target).firstFamily; }

OperationKind KindOfPath(RouteRole role, PathKind kind) {
    if (role == RouteRole::Outline) return OperationKind::Outline;
    if (role == RouteRole::CirclePocket) return OperationKind::Pocket;
    return role == RouteRole::Inside && kind == PathKind::PKC ? OperationKind::Pocket : OperationKind::Route;
}

void ExpectPath(const Case& one, RouteRole role, PathKind kind) {
    const std::string name = RouteLayerName(one.run, role, kind, one.depth);
    const std::optional<OperationName> read = ReadOperationName(one.Context(), name);
    const Target target = one.run.target;
    ASSERT_TRUE(read) << TraitsOf(target).name << " " << name;
    EXPECT_EQ(read->kind, TellsKindOfPaths(target) ? KindOfPath(role, kind) : OperationKind::Path) << name;
    EXPECT_EQ(read->depth.has_value(), TellsDepthOfPaths(target)) << name;
    ExpectDepth(*read, one.depth, name);
    if (TellsToolOfPaths(target)) {
        EXPECT_EQ(read->tool, one.run.part.bits.ToolNumber) << name;
    }
    if (read->diameter) {
        EXPECT_NEAR(*read->diameter, one.run.part.bits.ToolDiameter, 1e-12) << name;
    }
    EXPECT_EQ(read->counter.has_value(), target == Target::C2C && role != RouteRole::Outline) << name;
    if (!read->speed.empty()) {
        EXPECT_EQ(read->speed, "18000") << name;
    }
    if (!read->feed.empty()) {
        EXPECT_EQ(read->feed, "300") << name;
    }
}

TEST(OperationNames, EveryPathReadsBackToItsKindItsDepthAndItsTool) {
    constexpr auto roles =
        std::to_array<RouteRole>({RouteRole::Inside, RouteRole::CirclePocket, RouteRole::Through,
                                  RouteRole::ThroughCircle, RouteRole::Outline});
    ForAllDepths([&](Case& one) {
        for (const std::string& tool : Tools)
            for (const double diameter : Diameters)
                for (const std::string direction : {"cc", "c"}) {
                    UseToolOf(one.run, tool, diameter);
                    one.run.part.Material.direction = direction;
                    one.run.part.RouteCount = 17;
                    for (const RouteRole role : roles)
                        for (const PathKind kind : {PathKind::RT, PathKind::PKC}) ExpectPath(one, role, kind);
                }
    });
}

TEST(OperationNames, EverySheetReadsBackToItsThickness) {
    ForAllDepths([](const Case& one) {
        const std::string name = SheetLayerName(one.run, one.depth);
        if (name.empty()) return;
        const std::optional<OperationName> read = ReadOperationName(one.Context(), name);
        ASSERT_TRUE(read) << name;
        EXPECT_EQ(read->kind, OperationKind::Sheet) << name;
        ASSERT_TRUE(read->depth) << name;
        ExpectDepth(*read, one.depth, name);
    });
}

bool SaysThrough(Target target, const HoleCut& cut) {
    if (target != Target::WOP4 && target != Target::WOP5) return false;
    return cut.through || cut.start == HoleStart::Recess;
}

void ExpectHole(const Case& one, HoleStart start, double thickness, double diameter) {
    HoleCut cut = CutOf(one.run, start, {thickness, thickness - one.depth, thickness}, 0.3);
    cut.diameter = diameter;
    const std::string name = HoleLayerName(one.run, cut);
    const std::optional<OperationName> read = ReadOperationName(one.Context(), name);
    const Target target = one.run.target;
    ASSERT_TRUE(read) << TraitsOf(target).name << " " << name;
    EXPECT_EQ(read->kind, OperationKind::Hole) << name;
    EXPECT_EQ(read->through, SaysThrough(target, cut)) << name;
    // Blind holes of these two are named without the spoil that their drilled depth has.
    const bool plain =
        (target == Target::WOP4 || target == Target::WOP5) && start == HoleStart::TopFace && !cut.through;
    const double told = plain || target == Target::THERM ? cut.depth : cut.drilled;
    if (read->depth) {
        EXPECT_LE(std::abs(*read->depth - told), read->rounding + 1e-6) << name;
    }
    if (read->diameter) {
        EXPECT_NEAR(*read->diameter, diameter, 1e-6) << name;
    }
}

TEST(OperationNames, EveryVerticalHoleReadsBackToItsDepthAndItsDiameter) {
    ForAllDepths([](const Case& one) {
        for (const double more : {0.0, 7.0})
            for (const double diameter : Diameters)
                for (const HoleStart start : {HoleStart::TopFace, HoleStart::Recess})
                    ExpectHole(one, start, one.depth + more, diameter);
    });
}

void ExpectBore(const Case& one, const SideTraits& side, const BoreCut& cut) {
    const std::string name = BoreLayerName(one.run, side, cut);
    const std::optional<OperationName> read = ReadOperationName(one.Context(), name);
    const Target target = one.run.target;
    ASSERT_TRUE(read) << TraitsOf(target).name << " " << name;
    EXPECT_EQ(read->kind, OperationKind::Bore) << name;
    const bool sideless = target == Target::WOP4 || target == Target::WOP5 || target == Target::THERM;
    EXPECT_EQ(read->side.has_value(), !sideless) << name;
    if (read->side) {
        EXPECT_EQ(*read->side, side.side) << name;
    }
    ExpectDepth(*read, cut.depth, name);
    if (read->diameter) {
        EXPECT_LE(std::abs(*read->diameter - cut.diameter), read->rounding + 1e-9) << name;
    }
    if (read->height) {
        EXPECT_LE(std::abs(*read->height - cut.height), read->rounding + 1e-9) << name;
    }
}

TEST(OperationNames, EveryEdgeBoreReadsBackToItsSideItsHeightAndItsDepth) {
    ForAllDepths([](const Case& one) {
        for (const SideTraits& side : Sides())
            for (const double diameter : Diameters)
                for (const double height : {0.375, 8.0, 9.525})
                    ExpectBore(one, side, {diameter, one.depth, height});
    });
}

TEST(OperationNames, ALayerOfNoOperationIsNone) {
    for (const Target target : AllTargets) {
        const NameContext context{target, true, Tools, 5.0};
        for (const std::string_view name :
             {"", "circleHold", "SIDEW", "RT_", "VD_", "Panels", "DELETE", "Region", "PV-1A", "xyz"}) {
            EXPECT_FALSE(ReadOperationName(context, name)) << TraitsOf(target).name << " " << name;
        }
    }
}

TEST(OperationNames, WholeNumbersHaveNoDecimalMark) {
    for (const std::string_view name :
         {"TCHB2W0D1250p0", "TCHB2W0D12p5", "TCHB2W0D-1250", "TCHB8W0D180000p0"})
        EXPECT_FALSE(ReadOperationName({Target::BW, true, Tools, 12.5}, name)) << name;
    EXPECT_TRUE(ReadOperationName({Target::BW, true, Tools, 12.5}, "TCHB2W0D1250"));
}

TEST(OperationNames, NumbersAreInTheOneFormThatTheyAreWrittenIn) {
    const auto isRead = [](Target target, std::string_view name) {
        return ReadOperationName({target, true, Tools, 6.0}, name).has_value();
    };
    for (const std::string_view name : {"pocket 12 6", "dado p5 6p25", "outline 18p3", "drill z0p5",
                                        "drill z01", "drill z00", "drill z0", "drill z12p5", "hbore 8 20"})
        EXPECT_TRUE(isRead(Target::THERM, name)) << name;
    for (const std::string_view name :
         {"pocket 012 6", "pocket 12 06", "pocket 12 6p0", "pocket 12 6p", "dado 0p5 6p25", "outline 018p3",
          "drill z012p5", "drill z05", "drill z000", "hbore 08 20"})
        EXPECT_FALSE(isRead(Target::THERM, name)) << name;
    for (const std::string_view name : {"PKC_Z6_T1_D12_S1_F1_R_C0_01", "PKC_Z06_T1_D12_S1_F1_R_C0_1",
                                        "PKC_Z6_T1_D012_S1_F1_R_C0_1", "VD_Z10p0_T_D5"})
        EXPECT_FALSE(isRead(Target::C2C, name)) << name;
    EXPECT_FALSE(isRead(Target::BW, "TCHB2W0D01250"));
}

TEST(OperationNames, TheEntitysDepthDecidesWhereTwoToolsFitOneName) {
    const std::vector<std::string> tools{"1", "11"};
    const auto depthBy = [&](double depthOfEntity) {
        return ReadOperationName({Target::ROV, true, tools, depthOfEntity}, "115");
    };
    EXPECT_EQ(depthBy(15)->tool, "1");
    EXPECT_EQ(depthBy(15)->depth, 15.0);
    EXPECT_EQ(depthBy(5)->tool, "11");
    EXPECT_EQ(depthBy(5)->depth, 5.0);
}

}  // namespace
}  // namespace brenvik
