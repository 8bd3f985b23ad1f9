// Finding tips and drawing the loops at their corners.
#include "cnc/outline/tongue_leads.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

#include "base/numbers.h"
#include "cnc/plan/plan_vectors.h"

namespace brenvik {

namespace {

constexpr int Decimals = 5;
constexpr double DiametersPerLead = 1.25;
/// The cosine of 60 degrees: what leans over further is a bevel and no tongue.
constexpr double UprightFlank = 0.5;
constexpr auto Order =
    std::to_array<PartSide>({PartSide::Left, PartSide::Right, PartSide::Front, PartSide::Back});

double Round(double value) { return RoundHalfEven(value, Decimals); }

/// The direction, as a vector one long; of two vertices at one place none.
PlanPoint Between(const PathVertex& from, const PathVertex& to) {
    const double dx = to.x - from.x, dy = to.y - from.y, length = std::hypot(dx, dy);
    return length == 0 ? PlanPoint{} : PlanPoint{dx / length, dy / length};
}

PlanPoint OutOf(PartSide side) {
    switch (side) {
        case PartSide::Left:
            return {-1, 0};
        case PartSide::Right:
            return {1, 0};
        case PartSide::Front:
            return {0, -1};
        case PartSide::Back:
            return {0, 1};
    }
    return {};
}

/// The edge that a straight side lies in. A side in the middle of the part, in no edge, has none.
std::optional<PartSide> EdgeOf(const PathVertex& from, const PathVertex& to, const Box3& part) {
    const double halfLength = (part.min.x + part.max.x) / 2, halfWidth = (part.min.y + part.max.y) / 2;
    if (Round(from.x) == Round(to.x)) {
        const bool left = from.x < halfLength;
        if (Round(from.x) == Round(left ? part.min.x : part.max.x))
            return left ? PartSide::Left : PartSide::Right;
    }
    if (Round(from.y) == Round(to.y)) {
        const bool front = from.y < halfWidth;
        if (Round(from.y) == Round(front ? part.min.y : part.max.y))
            return front ? PartSide::Front : PartSide::Back;
    }
    return std::nullopt;
}

/// Walks an outline whose last side leads back to the first vertex.
class Outline {
  public:
    explicit Outline(std::span<const PathVertex> vertices) : mVertices(vertices) {}

    std::size_t Count() const { return mVertices.size(); }
    const PathVertex& At(std::size_t i) const { return mVertices[i % Count()]; }
    bool Straight(std::size_t side) const { return At(side).bulge == 0; }
    PlanPoint Along(std::size_t side) const { return Between(At(side), At(side + 1)); }

    /// Whether the outline turns towards the material's side, or away from it as at a shoulder. The sign is
    /// that of a corner of the tip: positive where the outline runs counter-clockwise.
    double TurnAt(std::size_t vertex) const { return Cross(Along(vertex + Count() - 1), Along(vertex)); }

  private:
    std::span<const PathVertex> mVertices;
};

/// A side is a tip when its flanks come straight out to it and begin at a shoulder, where the outline turns
/// the other way than at the tip's corners.
bool IsTip(const Outline& outline, std::size_t side, PartSide edge) {
    const std::size_t count = outline.Count();
    const std::size_t before = side + count - 1, after = side + 1;
    if (!outline.Straight(before) || !outline.Straight(side) || !outline.Straight(after)) return false;
    const PlanPoint out = OutOf(edge);
    if (Dot(outline.Along(before), out) < UprightFlank || Dot(outline.Along(after), out) > -UprightFlank)
        return false;
    const double corner = outline.TurnAt(side);
    return corner * outline.TurnAt(after) > 0 && corner * outline.TurnAt(before) < 0 &&
           corner * outline.TurnAt(after + 1) < 0;
}

/// A tip that may be one, with what decides between two.
struct Candidate {
    TongueTip tip;
    std::size_t shoulders[2] = {0, 0};
    double reach = 0;  ///< How far it stands out, by its shorter flank.

    double Area() const { return tip.length * reach; }
    bool SharesShoulder(const Candidate& other) const {
        return shoulders[0] == other.shoulders[1] || shoulders[1] == other.shoulders[0];
    }
};

Candidate CandidateAt(const Outline& outline, std::size_t side, PartSide edge) {
    const std::size_t count = outline.Count();
    const PathVertex &from = outline.At(side), &to = outline.At(side + 1);
    const PathVertex &first = outline.At(side + count - 1), &last = outline.At(side + 2);
    Candidate candidate;
    candidate.tip = {edge,
                     side,
                     (side + 1) % count,
                     {from.x, from.y, 0},
                     {to.x, to.y, 0},
                     std::hypot(to.x - from.x, to.y - from.y)};
    candidate.shoulders[0] = (side + count - 1) % count;
    candidate.shoulders[1] = (side + 2) % count;
    candidate.reach =
        std::min(std::hypot(from.x - first.x, from.y - first.y), std::hypot(to.x - last.x, to.y - last.y));
    return candidate;
}

/// Between tongues on two neighbouring edges the part itself stands out like one. Of two that begin at one
/// shoulder the smaller is the tongue.
bool IsBody(const Candidate& candidate, const std::vector<Candidate>& all) {
    return std::ranges::any_of(all, [&candidate](const Candidate& other) {
        return candidate.SharesShoulder(other) && Round(other.Area()) < Round(candidate.Area());
    });
}

/// The loop at a corner that the path enters in the direction `arriving` and leaves in `leaving`.
std::array<PathVertex, 3> Loop(const PathVertex& corner, const PlanPoint& arriving, const PlanPoint& leaving,
                               double lead) {
    const double ax = lead * arriving.x, ay = lead * arriving.y;
    const double lx = lead * leaving.x, ly = lead * leaving.y;
    return {{{corner.x + ax, corner.y + ay, 0},
             {corner.x + ax - lx, corner.y + ay - ly, 0},
             {corner.x - lx, corner.y - ly, 0}}};
}

}  // namespace

std::vector<TongueTip> TongueTips(std::span<const PathVertex> outline, const Box3& part) {
    std::vector<TongueTip> tips;
    // Below it no side has two flanks with a shoulder each.
    constexpr std::size_t fewest = 6;
    if (outline.size() < fewest) return tips;
    const Outline path(outline);
    std::vector<Candidate> candidates;
    for (const PartSide edge : Order)
        for (std::size_t side = 0; side < path.Count(); ++side)
            if (EdgeOf(path.At(side), path.At(side + 1), part) == edge && IsTip(path, side, edge))
                candidates.push_back(CandidateAt(path, side, edge));
    for (const Candidate& candidate : candidates)
        if (!IsBody(candidate, candidates)) tips.push_back(candidate.tip);
    return tips;
}

double LeadOf(double toolDiameter) { return Round(toolDiameter * DiametersPerLead); }

std::vector<PathVertex> WithLeads(std::span<const PathVertex> outline, std::span<const TongueTip> tips,
                                  double lead) {
    const Outline path(outline);
    std::map<std::size_t, std::array<PathVertex, 3>> loops;
    for (const TongueTip& tip : tips)
        for (const std::size_t corner : {tip.from, tip.to})
            loops[corner] =
                Loop(path.At(corner), path.Along(corner + path.Count() - 1), path.Along(corner), lead);
    std::vector<PathVertex> result;
    result.reserve(outline.size() + 2 * loops.size());
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const auto loop = loops.find(i);
        if (loop == loops.end())
            result.push_back(outline[i]);
        else
            result.insert(result.end(), loop->second.begin(), loop->second.end());
    }
    return result;
}

}  // namespace brenvik
