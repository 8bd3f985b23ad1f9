// The bodies of operations, and what they take from the part and from its blank.
#include "cnc/checker.h"

#include <cmath>

#include "cnc/part_steps.h"

namespace brenvik {

namespace {

/// What rounding of places to six decimals can cost, per unit of length of a contour.
constexpr double VolumeSlack = 1e-3;
constexpr std::string_view TrialDrawing = "c:\\BV-DXF\\checked.dwg";

bool Level(const Drawn& drawn) { return std::abs(std::abs(drawn.normal.z) - 1) < 1e-9; }

Acad3DSolid* CylinderOf(AcadBlock& space, const Drawn& circle) {
    const double depth = -circle.thickness, radius = circle.diameter / 2;
    if (depth <= 0) return nullptr;
    const Point3& mouth = circle.points.front();
    const Point3& out = circle.normal;
    const Point3 middle{mouth.x - out.x * depth / 2, mouth.y - out.y * depth / 2,
                        mouth.z - out.z * depth / 2};
    Acad3DSolid* body = space.AddCylinder(middle, radius, depth);
    if (!Level(circle)) {
        // Made upright; a quarter turn about the level axis across the bore lays it down.
        body->Rotate3D(middle, {middle.x - out.y, middle.y + out.x, middle.z}, std::numbers::pi / 2);
    }
    return body;
}

Acad3DSolid* PrismOf(AcadBlock& space, const Drawn& polyline, double height) {
    std::vector<double> flat;
    for (const Point3& corner : polyline.points) flat.insert(flat.end(), {corner.x, corner.y});
    AcadLWPolyline* contour = space.AddLightWeightPolyline(flat);
    contour->SetClosed(true);
    for (std::size_t i = 0; i < polyline.bulges.size(); ++i)
        contour->SetBulge(static_cast<int>(i), polyline.bulges[i]);
    AcadEntity* curve = contour;
    AcadRegion* region = space.AddRegion(std::span(&curve, 1)).at(0);
    const double up = region->Normal().z > 0 ? 1 : -1;
    Acad3DSolid* body = space.AddExtrudedSolid(*region, up * height, 0);
    body->Move({0, 0, 0}, {0, 0, polyline.points.front().z});
    region->Delete();
    contour->Delete();
    return body;
}

bool IsOutline(const Drawn& drawn) { return drawn.layer.starts_with("OT_"); }

/// The body of an operation, or nothing for the sheet and the outline.
Acad3DSolid* BodyOf(AcadBlock& space, const Drawn& drawn) {
    if (drawn.kind == "AcDbCircle") return CylinderOf(space, drawn);
    if (drawn.kind == "AcDbPolyline" && !IsOutline(drawn) && drawn.thickness < 0)
        return PrismOf(space, drawn, drawn.thickness);
    return nullptr;
}

/// The volume that `tool` takes from `body`; both stay.
double Taken(Acad3DSolid& body, Acad3DSolid& tool) {
    const double before = body.Volume();
    auto* rest = dynamic_cast<Acad3DSolid*>(body.Copy());
    auto* bit = dynamic_cast<Acad3DSolid*>(tool.Copy());
    double after = 0;
    // A body that is used up wholly may leave the host with nothing to answer for.
    Skip([&] {
        rest->Boolean(BooleanKind::Subtraction, *bit);
        after = rest->Volume();
    });
    Skip([&] { rest->Delete(); });
    Skip([&] { bit->Delete(); });
    return before - after;
}

std::string Told(const Cut& cut) {
    const Point3& place = cut.drawn.points.front();
    return cut.layer + (cut.secondSide ? " of the second side" : "") + " at " + NumberToText(place.x) + "," +
           NumberToText(place.y) + "," + NumberToText(place.z);
}

bool MayCutTwice(const Cut& cut, const CheckOptions& options) {
    for (const std::string& beginning : options.twice)
        if (cut.layer.starts_with(beginning)) return true;
    return false;
}

/// Two of one kind in one place: circles of one size, or contours with one footprint.
bool SameKind(const Cut& one, const Cut& other) {
    return one.drawn.kind == other.drawn.kind && std::abs(one.drawn.diameter - other.drawn.diameter) < 1e-4;
}

}  // namespace

void CheckedRunTest::RunAll(Target target) {
    ChooseAllSolids();
    RunOnSelection(host, target);
}

std::optional<std::vector<Drawn>> CheckedRunTest::FileOf(std::string_view folder, const std::string& prefix,
                                                         int index) {
    const std::vector<std::string> names = FilesIn(folder, prefix + std::to_string(index) + "_*.dxf");
    if (names.empty()) return std::nullopt;
    return Read(std::string(folder) + names.front());
}

Acad3DSolid* CheckedRunTest::LayFlat(Acad3DSolid& part, HostDocument*& trial) {
    AcadSelectionSet& set = FreshSet(document, "EXPORTSET");
    AcadEntity* member = &part;
    set.AddItems(std::span(&member, 1));
    files.MakeFolder("c:\\BV-DXF");
    document.Wblock(TrialDrawing, set);
    RunState run;
    run.app = &host;
    run.sessionDrawing = &document;
    run.part = host.Documents().Open(TrialDrawing);
    run.ExportScaleSetting = StrictIntegerSetting("ExportScaleSetting");
    if (run.ExportScaleSetting == 3) LastSolid(*run.part).ScaleEntity({0, 0, 0}, 25.4);
    if (run.ExportScaleSetting == 4) LastSolid(*run.part).ScaleEntity({0, 0, 0}, 0.0393700787401575);
    TheSession().AcadDoc = run.part;
    const PartStep step = AlignPart(run);
    TheSession().AcadDoc = &document;
    trial = dynamic_cast<HostDocument*>(run.part);
    if (step != PartStep::GoOn) return nullptr;
    UnlockAllLayers(*trial);
    Acad3DSolid& solid = LastSolid(*trial);
    solid.Move({0, 0, 0}, {0, 0, -solid.GetBoundingBox().max.z});
    return &solid;
}

std::vector<std::string> CheckedRunTest::Faults(Acad3DSolid& part, int index, const CheckOptions& options) {
    const std::optional<std::vector<Drawn>> first = FirstSide(index), second = SecondSide(index);
    if (!first) return {"there is no first file"};
    HostDocument* trial = nullptr;
    Acad3DSolid* solid = LayFlat(part, trial);
    if (solid == nullptr) return {"the part can't be laid flat"};
    AcadBlock& space = trial->ModelSpace();
    const Box3 box = solid->GetBoundingBox();
    const double slack = VolumeSlack * std::max(1.0, box.max.x + box.max.y);
    std::vector<std::string> faults;

    std::vector<Cut> cuts;
    Acad3DSolid* blank = nullptr;
    const auto gather = [&](const std::vector<Drawn>& drawn, bool secondSide) {
        for (const Drawn& operation : drawn) {
            if (operation.kind == "AcDbPolyline" && !operation.closed)
                faults.push_back(operation.layer + ": an open path");
            if (!secondSide && IsOutline(operation) && blank == nullptr)
                blank = PrismOf(space, operation, box.min.z);
            Acad3DSolid* body = BodyOf(space, operation);
            if (body == nullptr) continue;
            if (secondSide) {
                body->Rotate3D({0, 0, 0}, {1, 0, 0}, std::numbers::pi);
                body->Move({0, 0, 0}, {0, box.max.y, box.min.z});
            }
            cuts.push_back({operation.layer, secondSide, body, operation});
        }
    };
    gather(*first, false);
    if (second) gather(*second, true);
    if (blank == nullptr) {
        faults.push_back("there is no outline");
    } else {
        if (const double outside = solid->Volume() - Taken(*solid, *blank); outside > slack)
            faults.push_back("the part stands out of its outline by " + NumberToText(outside));
        for (const Cut& cut : cuts)
            Skip([&] {
                blank->Boolean(BooleanKind::Subtraction, *dynamic_cast<Acad3DSolid*>(cut.body->Copy()));
            });
        const double more = blank->Volume() - solid->Volume();
        if (more > options.uncovered + slack)
            faults.push_back("operations leave " + NumberToText(more) + " standing");
    }
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        if (const double taken = Taken(*solid, *cuts[i].body); taken > slack)
            faults.push_back(Told(cuts[i]) + " cuts " + NumberToText(taken) + " of the part");
        for (std::size_t j = i + 1; j < cuts.size(); ++j) {
            if (!SameKind(cuts[i], cuts[j]) || MayCutTwice(cuts[i], options)) continue;
            const double common = Taken(*cuts[i].body, *cuts[j].body);
            const double smaller = std::min(cuts[i].body->Volume(), cuts[j].body->Volume());
            if (common > 0.5 * smaller)
                faults.push_back(Told(cuts[i]) + " and " + Told(cuts[j]) + " cut the same");
        }
    }
    trial->Close(false);
    // The files of the trial are none of the run's.
    for (const std::string_view path : {TrialDrawing, WorkDrawing2})
        if (files.FileExists(path)) files.RemoveFile(path);
    return faults;
}

}  // namespace brenvik
