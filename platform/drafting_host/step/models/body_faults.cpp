// Goes through shells, faces, loops and edges as the statements have them. Everything is compared in the
// units of the file.
#include "drafting_host/step/models/body_faults.h"

#include <Bnd_Box.hxx>
#include <Geom_Plane.hxx>
#include <STEPConstruct_UnitContext.hxx>
#include <Standard_Failure.hxx>
#include <StepBasic_ConversionBasedUnit.hxx>
#include <StepBasic_MeasureWithUnit.hxx>
#include <StepData_GlobalFactors.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx.hxx>
#include <StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext.hxx>
#include <StepRepr_GlobalUncertaintyAssignedContext.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationContext.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <StepShape_BrepWithVoids.hxx>
#include <StepShape_EdgeLoop.hxx>
#include <StepShape_FaceBound.hxx>
#include <StepShape_FaceSurface.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <StepShape_OrientedClosedShell.hxx>
#include <StepShape_OrientedEdge.hxx>
#include <StepShape_OrientedFace.hxx>
#include <StepShape_PolyLoop.hxx>
#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "drafting_host/step/models/ball_faces.h"
#include "drafting_host/step/models/edge_samples.h"
#include "drafting_host/step/models/face_winding.h"

namespace brenvik::step {
namespace {

/// Millimetres. What may lie between pieces that should meet: kernels keep 1e-6, files that went through
/// several programs are worse, and a file may name more for itself, up to what a saw can't cut. Splines get
/// that much in any case, since each program meets curves and free surfaces as closely as it likes.
constexpr double LooseFit = 1e-4, LoosestFit = 1e-2;
/// File units; beyond it no coordinate means anything.
constexpr double LongestLength = 1e9;

/// The unit of a representation and how exactly its pieces meet.
struct Measures {
    double fit = LooseFit, freeFit = LoosestFit;  ///< File units.
    double angleFactor = 1, millimetres = 1;
    std::optional<std::string> fault;
};

/// An edge as a face uses it; `edge` is what its two faces share: the statement, or the pair of points.
struct EdgeUse : FaceEdge {
    const gp_Pnt& From() const { return forward ? samples->start : samples->end; }
    const gp_Pnt& To() const { return forward ? samples->end : samples->start; }
    /// An edge is known again by its middle where a file writes it twice.
    const gp_Pnt& Middle() const { return samples->middle; }
    bool IsRing() const { return From().Distance(To()) <= From().Distance(Middle()) / 2; }
    /// The point at a share of the way, as the face walks it.
    gp_Pnt At(double share) const {
        const double along = forward ? share : 1 - share;
        return samples->curve->Value(samples->first + (samples->last - samples->first) * along);
    }
};

/// Whether two rings at one place run against each other, which their ends don't show.
bool AgainstEachOther(const EdgeUse& one, const EdgeUse& other) {
    if (one.samples->curve.IsNull() || other.samples->curve.IsNull()) return true;
    const gp_Pnt early = one.At(0.25);
    return early.Distance(other.At(0.75)) <= early.Distance(other.At(0.25));
}

bool Near(const gp_Pnt& a, const gp_Pnt& b, double fit) { return a.Distance(b) <= fit; }

class SolidCheck {
  public:
    SolidCheck(const Handle(StepData_StepModel) & model, const Measures& measures)
        : mModel(model), mFit(measures.fit), mFreeFit(measures.freeFit) {}

    std::optional<ModelFault> Run(const Handle(StepShape_ManifoldSolidBrep) & solid) {
        if (auto fault = ShellFault(solid->Outer())) return fault;
        const Handle(StepShape_BrepWithVoids) hollow = Handle(StepShape_BrepWithVoids)::DownCast(solid);
        if (hollow.IsNull()) return std::nullopt;
        const Bnd_Box outer = ShellBox();
        for (int i = 1; i <= hollow->NbVoids(); ++i) {
            const Handle(StepShape_ClosedShell) shell = hollow->VoidsValue(i)->ClosedShellElement();
            if (shell == solid->Outer()) return Fault(solid, "its void is its own shell");
            if (auto fault = ShellFault(shell)) return fault;
            if (mAllKnown && !Holds(outer, ShellBox()))
                return Fault(shell, "its void " + Number(shell) + " reaches out of it");
        }
        return std::nullopt;
    }

    /// Of all faces on balls, square file units; 0 where one isn't known.
    double BallArea() const { return mBallsKnown ? mBalls : 0; }

  private:
    std::string Number(const Handle(Standard_Transient) & entity) const {
        return "#" + std::to_string(mModel->IdentLabel(entity));
    }
    ModelFault Fault(const Handle(Standard_Transient) & entity, std::string reason) const {
        return {mModel->IdentLabel(entity), std::move(reason)};
    }

    std::optional<ModelFault> ShellFault(const Handle(StepShape_ConnectedFaceSet) & shell);
    std::optional<ModelFault> FaceFault(const Handle(StepShape_Face) & face, bool turned);
    std::optional<ModelFault> LoopFault(const Handle(StepShape_EdgeLoop) & loop, bool turned,
                                        std::vector<EdgeUse>& uses);
    std::optional<ModelFault> PointsFault(const Handle(StepShape_PolyLoop) & loop, bool turned,
                                          std::vector<EdgeUse>& uses);
    std::optional<ModelFault> PlaneFault(const Handle(StepShape_Face) & face,
                                         const std::vector<EdgeUse>& uses) const;
    std::optional<ModelFault> SurfaceFault(const Handle(StepShape_FaceSurface) & face,
                                           const std::vector<EdgeUse>& uses,
                                           const std::vector<std::vector<FaceEdge>>& loops, bool sameSense);
    const EdgeSamples* Samples(const Handle(StepShape_EdgeCurve) & edge);
    EdgeUse Between(const Handle(StepGeom_CartesianPoint) & from, const Handle(StepGeom_CartesianPoint) & to);
    bool Closed() const;
    Bnd_Box ShellBox() const;
    /// A shell whose faces bulge beyond their edges holds more than its edges show: it isn't asked.
    bool Holds(const Bnd_Box& outer, const Bnd_Box& inner) const;

    const Handle(StepData_StepModel) & mModel;
    double mFit, mFreeFit;
    std::unordered_map<const Standard_Transient*, std::optional<EdgeSamples>> mEdges;
    /// The straight edges of loops of points.
    std::map<std::pair<const Standard_Transient*, const Standard_Transient*>, EdgeSamples> mPointEdges;
    std::vector<EdgeUse> mShellUses;
    double mBalls = 0;
    bool mBallsKnown = true;
    bool mHasRoundFaces = false;
    bool mAllKnown = true;  ///< False where the shell holds what isn't followed here.
};

const EdgeSamples* SolidCheck::Samples(const Handle(StepShape_EdgeCurve) & edge) {
    const auto [place, fresh] = mEdges.try_emplace(edge.get());
    if (fresh) place->second = SampleEdge(edge);
    return place->second ? &*place->second : nullptr;
}

std::optional<ModelFault> SolidCheck::LoopFault(const Handle(StepShape_EdgeLoop) & loop, bool turned,
                                                std::vector<EdgeUse>& uses) {
    std::vector<EdgeUse> chain;
    for (int i = 1; i <= loop->NbEdgeList(); ++i) {
        const Handle(StepShape_OrientedEdge) oriented = loop->EdgeListValue(i);
        const Handle(StepShape_EdgeCurve) edge =
            Handle(StepShape_EdgeCurve)::DownCast(oriented->EdgeElement());
        const EdgeSamples* samples = edge.IsNull() ? nullptr : Samples(edge);
        if (samples == nullptr) {
            mAllKnown = false;
            return std::nullopt;
        }
        if (!(samples->endMisfit <= (samples->free ? mFreeFit : mFit)))
            return Fault(edge, "a vertex of the edge " + Number(edge) + " does not lie on its curve");
        chain.push_back({{samples, edge.get(), oriented->Orientation() != Standard_False}});
    }
    for (std::size_t i = 0; i < chain.size(); ++i) {
        if (!Near(chain[i].To(), chain[(i + 1) % chain.size()].From(), mFit))
            return Fault(loop, "the edges of the loop " + Number(loop) + " do not meet");
    }
    if (turned) std::ranges::reverse(chain);
    for (EdgeUse& use : chain) {
        if (turned) use.forward = !use.forward;
        uses.push_back(use);
    }
    return std::nullopt;
}

gp_Pnt PlaceOf(const Handle(StepGeom_CartesianPoint) & point) {
    return {point->CoordinatesValue(1), point->CoordinatesValue(2), point->CoordinatesValue(3)};
}

EdgeUse SolidCheck::Between(const Handle(StepGeom_CartesianPoint) & from,
                            const Handle(StepGeom_CartesianPoint) & to) {
    const bool forward = from.get() < to.get();
    const Handle(StepGeom_CartesianPoint)& start = forward ? from : to;
    const Handle(StepGeom_CartesianPoint)& end = forward ? to : from;
    const auto [place, fresh] = mPointEdges.try_emplace({start.get(), end.get()});
    if (fresh) {
        place->second.start = PlaceOf(start);
        place->second.end = PlaceOf(end);
        place->second.middle = gp_Pnt((place->second.start.XYZ() + place->second.end.XYZ()) / 2);
    }
    return {{&place->second, &place->second, forward}};
}

std::optional<ModelFault> SolidCheck::PointsFault(const Handle(StepShape_PolyLoop) & loop, bool turned,
                                                  std::vector<EdgeUse>& uses) {
    const int count = loop->Polygon().IsNull() ? 0 : loop->NbPolygon();
    if (count < 3) return Fault(loop, "the loop " + Number(loop) + " has fewer than three points");
    for (int i = 1; i <= count; ++i) {
        const Handle(StepGeom_CartesianPoint)& point = loop->PolygonValue(i);
        if (point.IsNull() || point->NbCoordinates() != 3)
            return Fault(loop, "the loop " + Number(loop) + " holds what is no point in space");
    }
    for (int i = 1; i <= count; ++i) {
        const Handle(StepGeom_CartesianPoint)& from = loop->PolygonValue(i);
        const Handle(StepGeom_CartesianPoint)& to = loop->PolygonValue(i % count + 1);
        if (from == to) continue;
        EdgeUse use = Between(from, to);
        if (turned) use.forward = !use.forward;
        uses.push_back(use);
    }
    return std::nullopt;
}

/// A face that names no surface lies in the plane of its points.
std::optional<ModelFault> SolidCheck::PlaneFault(const Handle(StepShape_Face) & face,
                                                 const std::vector<EdgeUse>& uses) const {
    if (uses.empty()) return std::nullopt;
    const gp_XYZ origin = uses.front().From().XYZ();
    gp_XYZ normal;
    for (const EdgeUse& use : uses) normal += (use.From().XYZ() - origin).Crossed(use.To().XYZ() - origin);
    const double length = normal.Modulus();
    const bool flat = std::ranges::all_of(uses, [&](const EdgeUse& use) {
        return std::abs(normal.Dot(use.From().XYZ() - origin)) <= mFit * length;
    });
    if (length > 0 && flat) return std::nullopt;
    return Fault(face, "the points of the face " + Number(face) + " do not lie in a plane");
}

std::optional<ModelFault> SolidCheck::SurfaceFault(const Handle(StepShape_FaceSurface) & face,
                                                   const std::vector<EdgeUse>& uses,
                                                   const std::vector<std::vector<FaceEdge>>& loops,
                                                   bool sameSense) {
    FaceSurface surface(face);
    if (!surface.Known()) return std::nullopt;
    mHasRoundFaces = mHasRoundFaces || !surface.Surface()->IsKind(STANDARD_TYPE(Geom_Plane));
    for (const EdgeUse& use : uses) {
        const double fit = surface.Free() || use.samples->free ? mFreeFit : mFit;
        // Looking for a point on a free surface costs more than everything else here.
        constexpr std::size_t mostOnFree = 32;
        const std::vector<gp_Pnt>& inner = use.samples->inner;
        const std::size_t step = surface.Free() ? 1 + inner.size() / mostOnFree : 1;
        bool fits = surface.Distance(use.From()) <= fit;
        for (std::size_t i = 0; fits && i < inner.size(); i += step) fits = surface.Distance(inner[i]) <= fit;
        if (!fits) return Fault(face, "an edge of the face " + Number(face) + " does not lie on its surface");
    }
    mBallsKnown = mBallsKnown && mAllKnown;
    if (!mAllKnown) return std::nullopt;
    if (const auto winding = WindingFault(surface, loops, sameSense))
        return Fault(face, "the face " + Number(face) + " " + *winding);
    const auto ball = TakeBallFace(surface, loops, sameSense);
    if (ball && ball->bulges)
        return Fault(face, "the face " + Number(face) + " is a hollow of more than half a ball");
    if (ball) mBalls += ball->area;
    return std::nullopt;
}

std::optional<ModelFault> SolidCheck::FaceFault(const Handle(StepShape_Face) & face, bool turned) {
    const Handle(StepShape_OrientedFace) oriented = Handle(StepShape_OrientedFace)::DownCast(face);
    if (!oriented.IsNull()) {
        if (oriented->FaceElement().IsNull() || oriented->FaceElement() == face)
            return Fault(face, "the face " + Number(face) + " holds none");
        return FaceFault(oriented->FaceElement(), turned != (oriented->Orientation() == Standard_False));
    }
    std::vector<EdgeUse> uses;
    std::vector<std::vector<FaceEdge>> loops;
    bool ofPoints = false;
    for (int i = 1; i <= face->NbBounds(); ++i) {
        const Handle(StepShape_FaceBound) bound = face->BoundsValue(i);
        const bool turnedBound = turned != (bound->Orientation() == Standard_False);
        const Handle(StepShape_Loop) loop = bound->Bound();
        std::optional<ModelFault> fault;
        if (const auto edges = Handle(StepShape_EdgeLoop)::DownCast(loop); !edges.IsNull()) {
            const std::size_t before = uses.size();
            fault = LoopFault(edges, turnedBound, uses);
            loops.emplace_back(uses.begin() + static_cast<std::ptrdiff_t>(before), uses.end());
        } else if (const auto points = Handle(StepShape_PolyLoop)::DownCast(loop); !points.IsNull()) {
            ofPoints = true;
            fault = PointsFault(points, turnedBound, uses);
        } else {
            // An apex stands as a loop of one vertex.
            mAllKnown = mAllKnown && !loop.IsNull() &&
                        loop->DynamicType()->Name() == std::string_view("StepShape_VertexLoop");
        }
        if (fault) return fault;
    }
    mShellUses.insert(mShellUses.end(), uses.begin(), uses.end());
    const Handle(StepShape_FaceSurface) surface = Handle(StepShape_FaceSurface)::DownCast(face);
    if (!surface.IsNull()) {
        const bool sameSense = (surface->SameSense() != Standard_False) != turned;
        return SurfaceFault(surface, uses, loops, sameSense);
    }
    return ofPoints ? PlaneFault(face, uses) : std::nullopt;
}

/// Each edge is used once each way; where a file writes an edge of its own for each face, by its place.
bool SolidCheck::Closed() const {
    std::unordered_map<const void*, int> balance;
    for (const EdgeUse& use : mShellUses) balance[use.edge] += use.forward ? 1 : -1;
    std::vector<EdgeUse> open;
    for (const EdgeUse& use : mShellUses)
        if (balance[use.edge] != 0) open.push_back(use);
    std::sort(open.begin(), open.end(),
              [](const EdgeUse& a, const EdgeUse& b) { return a.Middle().X() < b.Middle().X(); });
    const double same = 10 * mFit;
    std::vector<bool> paired(open.size());
    for (std::size_t i = 0; i < open.size(); ++i) {
        for (std::size_t j = i + 1; !paired[i] && j < open.size(); ++j) {
            if (open[j].Middle().X() - open[i].Middle().X() > same) break;
            const bool twin = !paired[j] && Near(open[i].Middle(), open[j].Middle(), same) &&
                              Near(open[i].From(), open[j].To(), same) &&
                              Near(open[i].To(), open[j].From(), same) &&
                              (!open[i].IsRing() || AgainstEachOther(open[i], open[j]));
            if (twin) paired[i] = paired[j] = true;
        }
        if (!paired[i]) return false;
    }
    return true;
}

/// Of the edges alone.
Bnd_Box SolidCheck::ShellBox() const {
    Bnd_Box box;
    for (const EdgeUse& use : mShellUses) {
        for (const gp_Pnt& point : use.samples->Walk()) box.Add(point);
        box.Add(use.From());
    }
    return box;
}

bool SolidCheck::Holds(const Bnd_Box& outer, const Bnd_Box& inner) const {
    if (mHasRoundFaces || outer.IsVoid() || inner.IsVoid()) return true;
    const gp_XYZ low = inner.CornerMin().XYZ() - outer.CornerMin().XYZ();
    const gp_XYZ high = outer.CornerMax().XYZ() - inner.CornerMax().XYZ();
    return std::min({low.X(), low.Y(), low.Z(), high.X(), high.Y(), high.Z()}) >= -mFit;
}

std::optional<ModelFault> SolidCheck::ShellFault(const Handle(StepShape_ConnectedFaceSet) & shell) {
    mShellUses.clear();
    mAllKnown = true;
    for (int i = 1; i <= shell->NbCfsFaces(); ++i)
        if (auto fault = FaceFault(shell->CfsFacesValue(i), false)) return fault;
    if (mAllKnown && !Closed()) return Fault(shell, "the shell " + Number(shell) + " is not closed");
    return std::nullopt;
}

Handle(StepRepr_GlobalUnitAssignedContext)
    UnitsOf(const Handle(StepRepr_RepresentationContext) & context,
            Handle(StepRepr_GlobalUncertaintyAssignedContext) & uncertainty) {
    const auto full =
        Handle(StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx)::DownCast(context);
    if (!full.IsNull()) {
        uncertainty = full->GlobalUncertaintyAssignedContext();
        return full->GlobalUnitAssignedContext();
    }
    const auto plain =
        Handle(StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext)::DownCast(context);
    return plain.IsNull() ? Handle(StepRepr_GlobalUnitAssignedContext)() : plain->GlobalUnitAssignedContext();
}

Measures MeasuresOf(const Handle(StepRepr_RepresentationContext) & context) {
    Measures measures;
    Handle(StepRepr_GlobalUncertaintyAssignedContext) uncertainty;
    const Handle(StepRepr_GlobalUnitAssignedContext) units = UnitsOf(context, uncertainty);
    STEPConstruct_UnitContext factors;
    if (units.IsNull() || (factors.ComputeFactors(units), !factors.LengthDone())) {
        measures.fault = "its lengths have no unit";
        return measures;
    }
    if (factors.PlaneAngleDone()) measures.angleFactor = factors.PlaneAngleFactor();
    const double unit = factors.LengthFactor();
    if (!(unit > 0)) {
        measures.fault = "its unit of length is none";
        return measures;
    }
    double fit = LooseFit;
    if (!uncertainty.IsNull()) {
        factors.ComputeTolerance(uncertainty);
        if (factors.HasUncertainty()) fit = std::clamp(factors.Uncertainty() * unit, LooseFit, LoosestFit);
    }
    measures.millimetres = unit;
    measures.fit = fit / unit;
    measures.freeFit = LoosestFit / unit;
    return measures;
}

void Check(const Handle(StepData_StepModel) & model, const Handle(StepShape_ManifoldSolidBrep) & solid,
           const Measures& measures, BodyChecks& checks) {
    SolidCheck check(model, measures);
    std::optional<ModelFault> fault;
    try {
        fault = check.Run(solid);
    } catch (const Standard_Failure&) {
        fault = ModelFault{model->IdentLabel(solid), "numbers that make no shape"};
    }
    const double balls = check.BallArea() * measures.millimetres * measures.millimetres;
    if (fault)
        checks.faults.push_back(BodyFault{Handle(Standard_Transient)(solid), *std::move(fault)});
    else if (balls > 0)
        checks.balls.push_back({Handle(Standard_Transient)(solid), balls});
}

}  // namespace

std::optional<ModelFault> FarPoint(const Handle(StepData_StepModel) & model) {
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(StepGeom_CartesianPoint) point =
            Handle(StepGeom_CartesianPoint)::DownCast(model->Value(index));
        if (point.IsNull()) continue;
        for (int i = 1; i <= point->NbCoordinates(); ++i) {
            if (!(std::abs(point->CoordinatesValue(i)) <= LongestLength))
                return ModelFault{model->IdentLabel(point),
                                  "a coordinate farther out than any drawing reaches"};
        }
    }
    return std::nullopt;
}

BodyChecks CheckBodies(const Handle(StepData_StepModel) & model) {
    BodyChecks checks;
    std::unordered_set<const Standard_Transient*> seen;
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(StepRepr_Representation) representation =
            Handle(StepRepr_Representation)::DownCast(model->Value(index));
        if (representation.IsNull() || representation->Items().IsNull()) continue;
        std::optional<Measures> measures;
        for (int item = 1; item <= representation->NbItems(); ++item) {
            const Handle(StepShape_ManifoldSolidBrep) solid =
                Handle(StepShape_ManifoldSolidBrep)::DownCast(representation->ItemsValue(item));
            if (solid.IsNull() || !seen.insert(solid.get()).second) continue;
            if (!measures) {
                measures = MeasuresOf(representation->ContextOfItems());
                StepData_GlobalFactors::Intance().InitializeFactors(1, measures->angleFactor, 1);
            }
            if (measures->fault) {
                checks.faults.push_back(
                    BodyFault{Handle(Standard_Transient)(solid),
                              ModelFault{model->IdentLabel(representation), *measures->fault}});
            } else {
                Check(model, solid, *measures, checks);
            }
        }
    }
    StepData_GlobalFactors::Intance().InitializeFactors(1, 1, 1);
    return checks;
}

std::vector<double> MillimetresPerUnit(const Handle(StepData_StepModel) & model) {
    std::vector<double> sizes;
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(StepRepr_RepresentationContext) context =
            Handle(StepRepr_RepresentationContext)::DownCast(model->Value(index));
        if (context.IsNull()) continue;
        Handle(StepRepr_GlobalUncertaintyAssignedContext) uncertainty;
        const Handle(StepRepr_GlobalUnitAssignedContext) units = UnitsOf(context, uncertainty);
        STEPConstruct_UnitContext factors;
        if (units.IsNull() || (factors.ComputeFactors(units), !factors.LengthDone())) continue;
        if (std::ranges::find(sizes, factors.LengthFactor()) == sizes.end())
            sizes.push_back(factors.LengthFactor());
    }
    return sizes;
}

}  // namespace brenvik::step
