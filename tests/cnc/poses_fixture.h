// One part in every pose: square to the world in all 24 ways, at two odd angles, and mirrored. What comes out
// is compared operation by operation.
//
// A part's faces and edges come in one order wherever it stands, so its files are the same from every pose,
// down to the corner of the sheet: letters, largest face and longest edge decide alike. A mirrored part's
// files are the mirror image; which of the two ends of the sheet its origin falls on is free, since "the
// first of equal edges" may be another one then.
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {

class PosesTest : public WholePartTest {
  protected:
    using MakePart = std::function<void(MadePart&)>;

    struct Turns {
        double x = 0, y = 0, z = 0;
    };
    static std::vector<Turns> AxisPoses() {
        std::vector<Turns> poses;
        for (const Turns& face : {Turns{}, Turns{90, 0, 0}, Turns{180, 0, 0}, Turns{270, 0, 0},
                                  Turns{0, 90, 0}, Turns{0, 270, 0}})
            for (const double about : {0.0, 90.0, 180.0, 270.0}) poses.push_back({face.x, face.y, about});
        return poses;
    }

    /// Runs the part in every pose and compares: all files alike, the mirrored ones in the mirror, nothing
    /// told, and the operations of the first pose put back onto the part without fault. Mirrored it stands on
    /// each of its six sides and at the odd angles.
    void ExpectSameFromEveryPose(const MakePart& make, Target target = Target::C2C,
                                 std::string_view letters = "LWT") {
        constexpr std::size_t posesOnOneSide = 4;
        std::vector<Turns> poses = AxisPoses();
        std::vector<Turns> mirrored;
        for (std::size_t i = 0; i < poses.size(); i += posesOnOneSide) mirrored.push_back(poses[i]);
        for (const Turns& odd : {Turns{31, -17, 123}, Turns{-142.7, 61.3, 8.9}}) {
            poses.push_back(odd);
            mirrored.push_back(odd);
        }
        // A rabbet that has run off the edge may be wider than its bit clears.
        Set("ClearCores", "1");
        std::vector<Acad3DSolid*> placed;
        for (const Turns& pose : poses) placed.push_back(&Place(make, pose, false, letters));
        for (const Turns& pose : mirrored) placed.push_back(&Place(make, pose, true, letters));
        dialogs.messages.clear();
        RunAll(target);
        ExpectQuiet();
        // Bores come with both sides.
        EXPECT_EQ(Faults(*placed.front(), 0, {0, {"H"}}), std::vector<std::string>{});
        const std::vector<Operation> wanted = OperationsOf(0);
        EXPECT_FALSE(wanted.empty());
        for (std::size_t i = 1; i < placed.size(); ++i) {
            const bool inMirror = i >= poses.size();
            SCOPED_TRACE("pose " + std::to_string(inMirror ? i - poses.size() : i) +
                         (inMirror ? " mirrored" : ""));
            const std::vector<Operation> found = OperationsOf(static_cast<int>(i));
            EXPECT_TRUE(inMirror ? SameInMirror(wanted, found) : Same(wanted, found, {}))
                << "wanted\n"
                << TextOf(wanted) << "found\n"
                << TextOf(found);
        }
    }

  private:
    /// One entity of a file without what may differ: the counter, where a path begins and which way it runs.
    struct Operation {
        std::string name;
        bool secondSide = false;
        double thickness = 0, diameter = 0;
        Point3 normal;
        std::vector<Point3> points;  ///< Corners, and the middles of arcs.
    };
    struct Mirrors {
        bool x = false, y = false;
    };

    Acad3DSolid& Place(const MakePart& make, const Turns& pose, bool mirrored, std::string_view letters) {
        MadePart part = Made();
        make(part);
        Acad3DSolid* solid = &part.Solid();
        if (mirrored) {
            auto* twin = dynamic_cast<Acad3DSolid*>(solid->Mirror3D({0, 0, 0}, {0, 1, 0}, {0, 0, 1}));
            solid->Delete();
            solid = twin;
        }
        GivePartData(*solid, "Panel", letters);
        Lay(*solid, pose.x, pose.y, pose.z, {});
        return *solid;
    }

    static std::string WithoutCounter(const std::string& layer) {
        const std::size_t compensation = layer.find("_C");
        const std::size_t last = layer.rfind('_');
        return compensation != std::string::npos && last > compensation ? layer.substr(0, last) : layer;
    }

    static Operation AsOperation(const Drawn& drawn, bool secondSide) {
        Operation operation{WithoutCounter(drawn.layer),
                            secondSide,
                            drawn.thickness,
                            drawn.diameter,
                            drawn.normal,
                            drawn.points};
        for (std::size_t i = 0; i < drawn.bulges.size(); ++i) {
            const double bulge = drawn.bulges[i];
            if (bulge == 0) continue;
            const Point3 &from = drawn.points[i], &to = drawn.points[(i + 1) % drawn.points.size()];
            operation.points.push_back({(from.x + to.x) / 2 + bulge * (to.y - from.y) / 2,
                                        (from.y + to.y) / 2 - bulge * (to.x - from.x) / 2, from.z});
        }
        return operation;
    }

    std::vector<Operation> OperationsOf(int index) {
        std::vector<Operation> operations;
        for (const bool second : {false, true})
            if (const auto drawn = second ? SecondSide(index) : FirstSide(index))
                for (const Drawn& each : *drawn) operations.push_back(AsOperation(each, second));
        return operations;
    }

    /// The corner of the sheet that lies against the origin.
    static Point3 FarCorner(const std::vector<Operation>& operations) {
        Point3 corner;
        for (const Operation& operation : operations)
            if (operation.name.starts_with("PL_"))
                for (const Point3& point : operation.points)
                    corner = {std::max(corner.x, point.x), std::max(corner.y, point.y), 0};
        return corner;
    }

    static Point3 Seen(const Point3& point, const Mirrors& mirrors, const Point3& far) {
        return {mirrors.x ? far.x - point.x : point.x, mirrors.y ? far.y - point.y : point.y, point.z};
    }

    static bool Near(const Point3& a, const Point3& b) {
        // The run's own steps between corners that run off an edge come in another order from another pose.
        constexpr double samePlace = 0.002;
        return std::abs(a.x - b.x) < samePlace && std::abs(a.y - b.y) < samePlace &&
               std::abs(a.z - b.z) < samePlace;
    }

    static bool Alike(const Operation& wanted, const Operation& found, const Mirrors& mirrors,
                      const Point3& far) {
        if (wanted.name != found.name || wanted.secondSide != found.secondSide ||
            wanted.points.size() != found.points.size() ||
            std::abs(wanted.thickness - found.thickness) > 1e-4 ||
            std::abs(wanted.diameter - found.diameter) > 1e-4)
            return false;
        const Point3 normal{mirrors.x ? -wanted.normal.x : wanted.normal.x,
                            mirrors.y ? -wanted.normal.y : wanted.normal.y, wanted.normal.z};
        if (!Near(normal, found.normal)) return false;
        return std::ranges::all_of(wanted.points, [&](const Point3& point) {
            return std::ranges::any_of(
                found.points, [&](const Point3& other) { return Near(Seen(point, mirrors, far), other); });
        });
    }

    static bool Same(const std::vector<Operation>& wanted, std::vector<Operation> found,
                     const Mirrors& mirrors) {
        if (wanted.size() != found.size()) return false;
        const Point3 far = FarCorner(wanted);
        return std::ranges::all_of(wanted, [&](const Operation& operation) {
            const auto twin = std::ranges::find_if(
                found, [&](const Operation& other) { return Alike(operation, other, mirrors, far); });
            if (twin == found.end()) return false;
            found.erase(twin);
            return true;
        });
    }

    /// The names of bores say on which edge they stand, so those of the sides change places in the mirror.
    static bool SameInMirror(const std::vector<Operation>& wanted, const std::vector<Operation>& found) {
        const auto swapped = [&wanted](std::string_view one, std::string_view other) {
            std::vector<Operation> sides = wanted;
            for (Operation& operation : sides) {
                if (operation.name.starts_with(one))
                    operation.name.replace(0, one.size(), other);
                else if (operation.name.starts_with(other))
                    operation.name.replace(0, other.size(), one);
            }
            return sides;
        };
        return Same(swapped("HL_", "HR_"), found, {true, false}) ||
               Same(swapped("HF_", "HB_"), found, {false, true});
    }

    static std::string TextOf(const std::vector<Operation>& operations) {
        std::vector<std::string> lines;
        for (const Operation& operation : operations) {
            std::string line = (operation.secondSide ? "second " : "first ") + operation.name + " " +
                               NumberToText(operation.thickness) + " " + NumberToText(operation.diameter);
            for (const Point3& point : operation.points)
                line += " (" + NumberToText(RoundHalfEven(point.x, 3)) + "," +
                        NumberToText(RoundHalfEven(point.y, 3)) + "," +
                        NumberToText(RoundHalfEven(point.z, 3)) + ")";
            lines.push_back(line);
        }
        std::ranges::sort(lines);
        return Join(lines, "\n") + "\n";
    }
};

}  // namespace brenvik
