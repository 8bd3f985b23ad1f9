// The search for the faces. Areas are compared as rounded, so that of two equal faces the first wins however
// the part lies in its drawing.
#include "cnc/laying/alignment_faces.h"

#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/explode_all.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/laying/orientation.h"

namespace brenvik {

namespace {

constexpr int AreaDecimals = 6, NormalDecimals = 4;
/// Two areas that differ by no more are one: the noise of a turned face may tip its last decimal.
constexpr double SameArea = 1.5e-6;

FlatFace Measured(AcadRegion& region) {
    const Point3 normal = region.Normal();
    return {&region,
            Settled(region.Area(), AreaDecimals),
            normal,
            {Settled(normal.x, NormalDecimals), Settled(normal.y, NormalDecimals),
             Settled(normal.z, NormalDecimals)}};
}

std::vector<FlatFace> MeasuredFaces(const std::vector<AcadRegion*>& regions) {
    std::vector<FlatFace> faces;
    for (AcadRegion* region : regions) Skip([&] { faces.push_back(Measured(*region)); });
    return faces;
}

bool Greater(const FlatFace& a, const FlatFace& b) { return a.area - b.area > SameArea; }

bool Opposite(const Point3& a, const Point3& b) { return a.x == -b.x && a.y == -b.y && a.z == -b.z; }

void FindNextRegion(FlatFaces& found, const std::vector<FlatFace>& faces) {
    const FlatFace& largest = found.LargestRegion;
    const auto mayLieAgainst = [&largest](const FlatFace& face) {
        return face.region != largest.region && !Greater(face, largest) &&
               Opposite(face.roundedNormal, largest.roundedNormal);
    };
    for (const FlatFace& face : faces) {
        if (!mayLieAgainst(face) || !Greater(face, found.SmallestRegion)) continue;
        found.NextRegion = face;
        break;
    }
    // The whole normal counts, not its height alone: of a part that stands on edge all sides look as far up
    // as the largest face looks down.
    for (const FlatFace& face : faces)
        if (mayLieAgainst(face) && Greater(face, found.NextRegion)) found.NextRegion = face;
}

/// The faces that count, and the first region of the drawing, wherever it is.
struct Candidates {
    std::optional<FlatFace> first;
    std::vector<FlatFace> faces;
};

Candidates CandidatesOf(AcadDocument& drawing) {
    Candidates candidates;
    candidates.faces = MeasuredFaces(AllOn<AcadRegion>(drawing, layers::BrenvikExplode));
    for (AcadRegion* region : All<AcadRegion>(drawing))
        if (!candidates.first) Skip([&] { candidates.first = Measured(*region); });
    return candidates;
}

std::optional<FlatFaces> LargestOf(const Candidates& candidates) {
    if (!candidates.first) return std::nullopt;
    FlatFaces found{*candidates.first, *candidates.first, *candidates.first};
    for (const FlatFace& face : candidates.faces) {
        if (Greater(face, found.LargestRegion)) found.LargestRegion = face;
        if (Greater(found.SmallestRegion, face)) found.SmallestRegion = face;
    }
    return found;
}

}  // namespace

void ExplodeCopyToFaces(AcadDocument& drawing, Acad3DSolid& solid) {
    AddLayer(drawing, layers::BrenvikExplode);
    solid.Copy()->SetLayer(layers::BrenvikExplode);
    AddLayer(drawing, layers::Region);
    const OnlyUnlocked only(drawing, {layers::BrenvikExplode});
    drawing.SendCommand(ExplodeAll);
}

std::optional<FlatFaces> FindLargestFace(AcadDocument& drawing) { return LargestOf(CandidatesOf(drawing)); }

std::optional<FlatFaces> FindFaces(AcadDocument& drawing) {
    const Candidates candidates = CandidatesOf(drawing);
    std::optional<FlatFaces> found = LargestOf(candidates);
    if (found) FindNextRegion(*found, candidates.faces);
    return found;
}

}  // namespace brenvik
