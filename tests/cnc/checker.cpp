// The bodies of operations, and what they take from the part and from its blank.
#include "cnc/checker.h"
#include "cnc/laying/alignment.h"
#include "cnc/part/run_state.h"

#include <algorithm>
#include <cmath>

#include "cnc/checked_names.h"
#include "session/library/cnc_commands.h"

namespace brenvik {

namespace {

/// What rounding of places and depths costs, per unit of the part's area: depths have five decimals.
constexpr double VolumeSlack = 1e-5;
/// Places in files have six decimals or more.
constexpr double PlaceSlack = 2e-6;
constexpr std::string_view TrialDrawing = "c:\\BV-DXF\\checked.dwg";

bool Level(const Drawn& drawn) { return std::abs(std::abs(drawn.normal.z) - 1) < 1e-9; }
bool IsOutline(const Drawn& drawn) { return drawn.layer.starts_with("OT_"); }
bool Apart(double a, double b) { return std::abs(a - b) > PlaceSlack; }

bool Apart(const Box3& a, const Box3& b) {
    return Apart(a.min.x, b.min.x) || Apart(a.min.y, b.min.y) || Apart(a.max.x, b.max.x) ||
           Apart(a.max.y, b.max.y);
}

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

/// The body of an operation, or nothing for the sheet and the outline.
Acad3DSolid* BodyOf(AcadBlock& space, const Drawn& drawn) {
    if (drawn.kind == "AcDbCircle") return CylinderOf(space, drawn);
    if (drawn.kind == "AcDbPolyline" && !IsOutline(drawn) && drawn.thickness < 0)
        return PrismOf(space, drawn, drawn.thickness);
    return nullptr;
}

/// Whether two boxes have more than a skin in common.
bool Overlap(const Box3& a, const Box3& b) {
    const auto lap = [](double aLow, double aHigh, double bLow, double bHigh) {
        return std::min(aHigh, bHigh) - std::max(aLow, bLow) > PlaceSlack;
    };
    return lap(a.min.x, a.max.x, b.min.x, b.max.x) && lap(a.min.y, a.max.y, b.min.y, b.max.y) &&
           lap(a.min.z, a.max.z, b.min.z, b.max.z);
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

std::string PlaceText(const Point3& place) {
    return NumberToText(place.x) + "," + NumberToText(place.y) + "," + NumberToText(place.z);
}

std::string Told(const Cut& cut) {
    return cut.layer + (cut.secondSide ? " of the second side" : "") + " at " +
           PlaceText(cut.drawn.points.front());
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

/// The bodies of both files of one part, against the part.
class Check {
  public:
    Check(Acad3DSolid& part, AcadBlock& space, Target target, const CheckOptions& options)
        : mPart(part),
          mSpace(space),
          mTarget(target),
          mOptions(options),
          mBox(part.GetBoundingBox()),
          mSlack(VolumeSlack * (mBox.max.x * mBox.max.y + mBox.max.x + mBox.max.y)) {}

    void Gather(const std::vector<Drawn>& file, bool secondSide) {
        Acad3DSolid*& blank = mBlanks[secondSide ? 1 : 0];
        for (const Drawn& drawn : file) {
            const std::string where = (secondSide ? "second side: " : "") + drawn.layer;
            if (drawn.kind != "AcDbCircle" && drawn.kind != "AcDbPolyline" && drawn.kind != "AcDb3dPolyline")
                mFaults.push_back(where + ": a " + drawn.kind + " in the file");
            if (drawn.kind == "AcDbPolyline" && !drawn.closed) mFaults.push_back(where + ": an open path");
            if (drawn.kind == "AcDb3dPolyline") LookAtSheet(drawn, where);
            if (drawn.kind != "AcDb3dPolyline" && Level(drawn) && Apart(drawn.points.front().z, 0))
                mFaults.push_back(where + " lies at " + PlaceText(drawn.points.front()));
            for (const std::string& fault : NameFaults(mTarget, drawn)) mFaults.push_back(where + fault);
            if (IsOutline(drawn)) {
                if (blank != nullptr) mFaults.push_back(where + ": a second outline");
                blank = OnItsSide(PrismOf(mSpace, drawn, mBox.min.z), secondSide);
                continue;
            }
            Acad3DSolid* body = BodyOf(mSpace, drawn);
            if (body == nullptr) continue;
            OnItsSide(body, secondSide);
            mCuts.push_back({drawn.layer, secondSide, body, body->GetBoundingBox(), drawn});
        }
    }

    void LookAtBlanks(bool bothSides) {
        LookAtBlank(mBlanks[0]);
        if (!bothSides) return;
        // Both sides are cut from one blank.
        if (mBlanks[1] == nullptr)
            mFaults.push_back("second side: there is no outline");
        else if (mBlanks[0] != nullptr && (std::abs(mBlanks[1]->Volume() - mBlanks[0]->Volume()) > mSlack ||
                                           Apart(mBlanks[1]->GetBoundingBox(), mBlanks[0]->GetBoundingBox())))
            mFaults.push_back("second side: the outline is another one");
    }

    void LookAtCuts() {
        for (std::size_t i = 0; i < mCuts.size(); ++i) {
            if (const double taken = Taken(mPart, *mCuts[i].body); taken > mSlack)
                mFaults.push_back(Told(mCuts[i]) + " cuts " + NumberToText(taken) + " of the part");
            for (std::size_t j = i + 1; j < mCuts.size(); ++j) LookAtPair(mCuts[i], mCuts[j]);
        }
    }

    const std::vector<std::string>& Found() const { return mFaults; }

  private:
    Acad3DSolid* OnItsSide(Acad3DSolid* body, bool secondSide) const {
        if (!secondSide) return body;
        body->Rotate3D({0, 0, 0}, {1, 0, 0}, std::numbers::pi);
        body->Move({0, 0, 0}, {0, mBox.max.y, mBox.min.z});
        return body;
    }

    void LookAtSheet(const Drawn& sheet, const std::string& where) {
        double left = 1e9, front = 1e9, right = -1e9, back = -1e9;
        for (const Point3& corner : sheet.points) {
            left = std::min(left, corner.x);
            front = std::min(front, corner.y);
            right = std::max(right, corner.x);
            back = std::max(back, corner.y);
            if (Apart(corner.z, mBox.min.z)) mFaults.push_back(where + ": a corner at " + PlaceText(corner));
        }
        if (Apart(left, 0) || Apart(front, 0) || Apart(right, mBox.max.x) || Apart(back, mBox.max.y))
            mFaults.push_back(where + ": the sheet isn't the part's");
        if (Apart(sheet.thickness, -mBox.min.z)) mFaults.push_back(where + ": the sheet's thickness");
    }

    void LookAtBlank(Acad3DSolid* outline) {
        if (outline == nullptr) {
            mFaults.push_back("there is no outline");
            return;
        }
        if (const double outside = mPart.Volume() - Taken(mPart, *outline); outside > mSlack)
            mFaults.push_back("the part stands out of its outline by " + NumberToText(outside));
        auto* blank = dynamic_cast<Acad3DSolid*>(outline->Copy());
        for (const Cut& cut : mCuts)
            Skip([&] {
                blank->Boolean(BooleanKind::Subtraction, *dynamic_cast<Acad3DSolid*>(cut.body->Copy()));
            });
        const double more = blank->Volume() - mPart.Volume();
        if (more > mOptions.uncovered + mSlack)
            mFaults.push_back("operations leave " + NumberToText(more) + " standing");
    }

    void LookAtPair(const Cut& one, const Cut& other) {
        if (!SameKind(one, other) || MayCutTwice(one, mOptions) || !Overlap(one.box, other.box)) return;
        const double common = Taken(*one.body, *other.body);
        if (common > 0.5 * std::min(one.body->Volume(), other.body->Volume()))
            mFaults.push_back(Told(one) + " and " + Told(other) + " cut the same");
    }

    Acad3DSolid& mPart;
    AcadBlock& mSpace;
    Target mTarget;
    const CheckOptions& mOptions;
    Box3 mBox;
    double mSlack;
    Acad3DSolid* mBlanks[2] = {nullptr, nullptr};
    std::vector<Cut> mCuts;
    std::vector<std::string> mFaults;
};

}  // namespace

void CheckedRunTest::RunAll(Target target) {
    ChooseAllSolids();
    RunOnly(target);
}

void CheckedRunTest::RunOnly(Target target) {
    mLastTarget = target;
    RunOnSelection(host, target, GridBeforeRuns());
}

std::optional<std::vector<Drawn>> CheckedRunTest::FileOf(std::string_view folder, const std::string& prefix,
                                                         int index) {
    const std::vector<std::string> names = FilesIn(folder, prefix + std::to_string(index) + "_*.dxf");
    if (names.empty()) return std::nullopt;
    return Read(std::string(folder) + names.front());
}

Acad3DSolid* CheckedRunTest::LayFlat(Acad3DSolid& part, HostDocument*& trial) {
    AcadDocument* const drawing = TheSession().AcadDoc;
    AcadSelectionSet& set = FreshSet(*drawing, "EXPORTSET");
    AcadEntity* member = &part;
    set.AddItems(std::span(&member, 1));
    files.MakeFolder("c:\\BV-DXF");
    drawing->Wblock(TrialDrawing, set);
    RunState run;
    run.app = &host;
    run.sessionDrawing = drawing;
    run.part.drawing = host.Documents().Open(TrialDrawing);
    run.part.ExportScaleSetting = StrictIntegerSetting(setting::ExportScaleSetting);
    if (run.part.ExportScaleSetting == 3) LastSolid(*run.part.drawing).ScaleEntity({0, 0, 0}, 25.4);
    if (run.part.ExportScaleSetting == 4)
        LastSolid(*run.part.drawing).ScaleEntity({0, 0, 0}, 0.0393700787401575);
    TheSession().AcadDoc = run.part.drawing;
    const PassOutcome step = AlignPart(run);
    TheSession().AcadDoc = drawing;
    trial = dynamic_cast<HostDocument*>(run.part.drawing);
    if (step != PassOutcome::GoOn) return nullptr;
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
    Check check(*solid, trial->ModelSpace(), mLastTarget, options);
    check.Gather(*first, false);
    if (second) check.Gather(*second, true);
    check.LookAtBlanks(second && StrictIntegerSetting(setting::DeleteOT) != 1);
    check.LookAtCuts();
    trial->Close(false);
    // The files of the trial are none of the run's.
    for (const std::string_view path : {TrialDrawing, WorkDrawing2})
        if (files.FileExists(path)) files.RemoveFile(path);
    return check.Found();
}

}  // namespace brenvik
