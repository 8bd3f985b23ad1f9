// Full rounds written in ways that leave the seam to the reader: vertices that do not stand opposite each
// other, seams that are edges already, openings in the way.
#include "acis_testing.h"

#include <gtest/gtest.h>
#include <TopExp_Explorer.hxx>

#include <array>
#include <cmath>
#include <map>
#include <numbers>

namespace brenvik::acis::testing {
namespace {

constexpr double pi = std::numbers::pi;

std::string Place(double x, double y, double z) {
    char text[120];
    std::snprintf(text, sizeof text, "%.17g %.17g %.17g", x, y, z);
    return text;
}

/// An edge of a text in the making. Edges of the same name are one; ends of the same place are one.
struct EdgeText {
    std::string name;
    std::string start, end;  // coordinates
    std::string curve;       // its record
    bool forward = true;
};

/// A text with one sheet of one face.
std::string Sheet(const std::string& surface, const std::vector<std::vector<EdgeText>>& loops) {
    std::vector<std::string> records{"body $-1 $1 $-1 $-1 #", "lump $-1 $-1 $2 $0 #",
                                     "shell $-1 $-1 $-1 $3 $-1 $1 #", "", surface + " #"};
    std::map<std::string, std::string> known;  // pointers by place or name
    const auto add = [&](const std::string& record) {
        records.push_back(record);
        return "$" + std::to_string(records.size() - 1);
    };
    const auto vertex = [&](const std::string& place) {
        if (!known.count(place))
            known[place] = add("vertex $-1 $-1 " + add("point $-1 " + place + " #") + " #");
        return known[place];
    };
    std::string nextLoop = "$-1";
    for (const auto& loop : loops) {
        std::vector<std::string> edges;
        for (const EdgeText& edge : loop) {
            if (!known.count(edge.name)) {
                const std::string start = vertex(edge.start);
                const std::string end = vertex(edge.end);
                const std::string curve = edge.curve.empty() ? "$-1" : add(edge.curve + " I I #");
                known[edge.name] = add("edge $-1 " + start + " " + end + " $-1 " + curve + " forward #");
            }
            edges.push_back(known[edge.name]);
        }
        const std::size_t first = records.size();
        for (std::size_t i = 0; i < edges.size(); ++i) {
            add("coedge $-1 $" + std::to_string(first + (i + 1) % edges.size()) + " $-1 $-1 " + edges[i] +
                (loop[i].forward ? " forward" : " reversed") + " $-1 $-1 #");
        }
        nextLoop = add("loop $-1 " + nextLoop + " $" + std::to_string(first) + " $3 #");
    }
    records[3] = "face $-1 $-1 " + nextLoop + " $2 $-1 $4 forward double out #";
    std::string text =
        "400 " + std::to_string(records.size()) + " 1 0\n7 Brenvik 9 ACIS 4.00 0 \n1 1e-6 1e-10\n";
    for (const std::string& record : records) text += record + "\n";
    return text;
}

constexpr double radius = 10;
const std::string rod = "cone-surface $-1 0 0 0 0 0 1 10 0 0 1 I I 0 1 10 forward I I I I";

std::string OnRod(double angle, double z) {
    return Place(radius * std::cos(angle), radius * std::sin(angle), z);
}

std::string Circle(double z) { return "ellipse-curve $-1 0 0 " + std::to_string(z) + " 0 0 1 10 0 0 1"; }

/// A full round at a height, divided at the given angles.
std::vector<EdgeText> Round(double z, const std::vector<double>& angles, bool forward) {
    std::vector<EdgeText> loop;
    for (std::size_t i = 0; i < angles.size(); ++i) {
        loop.push_back({"round" + std::to_string(z) + "/" + std::to_string(i), OnRod(angles[i], z),
                        OnRod(angles[(i + 1) % angles.size()], z), Circle(z), forward});
    }
    if (!forward) std::reverse(loop.begin(), loop.end());
    return loop;
}

/// A rectangular opening between two heights and angles, its area on the right.
std::vector<EdgeText> Opening(double low, double high, double from, double to) {
    const std::string name = "opening" + std::to_string(from);
    const auto line = [&](double angle) { return "straight-curve $-1 " + OnRod(angle, low) + " 0 0 1"; };
    return {{name + "up", OnRod(from, low), OnRod(from, high), line(from), true},
            {name + "top", OnRod(from, high), OnRod(to, high), Circle(high), true},
            {name + "down", OnRod(to, low), OnRod(to, high), line(to), false},
            {name + "bottom", OnRod(from, low), OnRod(to, low), Circle(low), false}};
}

void ExpectSheet(const std::string& text, double area, int edges) {
    const TopoDS_Shape face = ReadOne(text);
    ASSERT_FALSE(face.IsNull());
    EXPECT_NEAR(Area(face), area, 1e-9 * area);
    EXPECT_EQ(Count(face, TopAbs_FACE), 1);
    EXPECT_EQ(Count(face, TopAbs_EDGE), edges);
}

TEST(Seam, RunsBetweenVerticesThatStandOppositeEachOther) {
    ExpectSheet(Sheet(rod, {Round(0, {0.3}, true), Round(20, {0.3}, false)}), 2 * pi * radius * 20, 3);
}

TEST(Seam, MovesTheVertexOfAFullCircle) {
    ExpectSheet(Sheet(rod, {Round(0, {0.3}, true), Round(20, {2.9}, false)}), 2 * pi * radius * 20, 3);
    ExpectSheet(Sheet(rod, {Round(0, {0.3, 1.7}, true), Round(20, {2.9}, false)}), 2 * pi * radius * 20, 4);
    ExpectSheet(Sheet(rod, {Round(0, {0.3}, true), Round(20, {2.9, 4}, false)}), 2 * pi * radius * 20, 4);
}

TEST(Seam, DividesAnEdgeWhereNoVertexMayMove) {
    ExpectSheet(Sheet(rod, {Round(0, {0.3, 1.7}, true), Round(20, {2.9, 4}, false)}), 2 * pi * radius * 20,
                6);
}

TEST(Seam, KeepsClearOfOpenings) {
    const double area = 2 * pi * radius * 20;
    // In front of both vertices.
    ExpectSheet(Sheet(rod, {Round(0, {0.3}, true), Round(20, {0.3}, false), Opening(5, 10, 0.1, 0.5)}),
                area - radius * 0.4 * 5, 7);
    // Nearly all round.
    ExpectSheet(Sheet(rod, {Round(0, {0.3}, true), Round(20, {3}, false), Opening(5, 10, 0.1, 2 * pi - 0.4)}),
                area - radius * (2 * pi - 0.5) * 5, 7);
    // Over the end of the parameters.
    ExpectSheet(Sheet(rod, {Round(0, {0.3}, true), Round(20, {0.3}, false), Opening(5, 10, -0.2, 0.2),
                            Opening(5, 10, 3.0, 3.3)}),
                area - radius * 0.7 * 5, 11);
}

TEST(Seam, MayBeAnEdgeOfTheTextAlready) {
    const EdgeText seam{"seam", OnRod(0.3, 0), OnRod(0.3, 20),
                        "straight-curve $-1 " + OnRod(0.3, 0) + " 0 0 1", true};
    EdgeText back = seam;
    back.forward = false;
    std::vector<EdgeText> loop = Round(0, {0.3}, true);
    loop.push_back(seam);
    loop.push_back(Round(20, {0.3}, false).front());
    loop.push_back(back);
    ExpectSheet(Sheet(rod, {loop}), 2 * pi * radius * 20, 3);
}

TEST(Seam, LeavesAHalfRoundWithoutOne) {
    std::vector<EdgeText> patch = Opening(0, 20, 0, pi);
    std::reverse(patch.begin(), patch.end());
    for (EdgeText& edge : patch) edge.forward = !edge.forward;
    ExpectSheet(Sheet(rod, {patch}), pi * radius * 20, 4);
}

TEST(Seam, RunsUpToAnApexWhetherTheTextHasItOrNot) {
    const std::string cone = "cone-surface $-1 0 0 0 0 0 1 10 0 0 1 I I -0.6 0.8 10 forward I I I I";
    const std::string tip = Place(0, 0, 10 / 0.75);
    const double area = pi * radius * 10 / 0.6;
    const EdgeText apex{"apex", tip, tip, "", true};
    ExpectSheet(Sheet(cone, {Round(0, {1}, true), {apex}}), area, 3);
    ExpectSheet(Sheet(cone, {Round(0, {1}, true)}), area, 3);
}

TEST(Seam, TakesAConeThatNarrowsAgainstItsSigns) {
    const std::string cone = "cone-surface $-1 0 0 0 0 0 1 10 0 0 1 I I -0.6 -0.8 10 forward I I I I";
    const double area = pi * radius * 10 / 0.6;
    const std::vector<EdgeText> top{
        {"top", Place(4, 0, 8), Place(4, 0, 8), "ellipse-curve $-1 0 0 8 0 0 1 4 0 0 1", false}};
    ExpectSheet(Sheet(cone, {Round(0, {1}, true), top}), area * (1 - 0.16), 3);
}

TEST(Seam, TakesTheCapOrTheRestOfABallAsTheFaceSays) {
    const std::string ball = "sphere-surface $-1 0 0 -6 11.66190378969060 1 0 0 0 0 1 forward_v I I I I";
    const double whole = 4 * pi * 136;
    const double cap = 2 * pi * std::sqrt(136.0) * (std::sqrt(136.0) - 6);
    ExpectSheet(Sheet(ball, {Round(0, {0.7}, true)}), cap, 3);
    ExpectSheet(Sheet(ball, {Round(0, {0.7}, false)}), whole - cap, 3);
}

TEST(Sheets, OfSeveralAreasInOneFlatFaceBecomeSeveralFaces) {
    const std::string plane = "plane-surface $-1 0 0 0 0 0 1 1 0 0 forward_v I I I I";
    const auto ring = [](double x, double r, bool forward) {
        const std::string at = Place(x + r, 0, 0);
        const std::string curve = "ellipse-curve $-1 " + Place(x, 0, 0) + " 0 0 1 " + Place(r, 0, 0) + " 1";
        return std::vector<EdgeText>{
            {"ring" + std::to_string(x) + "/" + std::to_string(r), at, at, curve, forward}};
    };
    const TopoDS_Shape faces =
        ReadOne(Sheet(plane, {ring(0, 1, false), ring(0, 2, true), ring(10, 3, true), ring(10, 1, false)}));
    ASSERT_FALSE(faces.IsNull());
    EXPECT_EQ(Count(faces, TopAbs_FACE), 2);
    EXPECT_NEAR(Area(faces), pi * (3 + 8), 1e-9);
}

TEST(Sheets, TakeTheSideOfTheirLoopsWhateverTheSenseSays) {
    const std::string plane = "plane-surface $-1 0 0 0 0 0 -1 1 0 0 forward_v I I I I";
    const std::string at = Place(1, 0, 0);
    const std::vector<EdgeText> ring{{"ring", at, at, "ellipse-curve $-1 0 0 0 0 0 1 1 0 0 1", true}};
    const TopoDS_Shape face = ReadOne(Sheet(plane, {ring}));
    ASSERT_FALSE(face.IsNull());
    EXPECT_NEAR(Area(face), pi, 1e-12);
    EXPECT_EQ(face.Orientation(), TopAbs_REVERSED);
}

}  // namespace
}  // namespace brenvik::acis::testing
