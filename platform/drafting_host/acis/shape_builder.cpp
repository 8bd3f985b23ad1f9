// Walking a body: lumps, shells, faces, loops, coedges. Every chain is walked with a note of where it
// has been, since a damaged text can lead it in circles.
#include "drafting_host/acis/shape_builder.h"

#include "drafting_host/acis/face_maker.h"
#include "drafting_host/acis/spline_shapes.h"

#include <BRepGProp.hxx>
#include <BRep_Builder.hxx>
#include <GProp_GProps.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <unordered_map>
#include <unordered_set>

namespace brenvik::acis {
namespace {

struct ShellWork {
    long record = -1;
    std::vector<std::size_t> faces;  // indices of plans
    TopoDS_Shell shape;
    double volume = 0;
    bool sheet = false;
    bool closed = false;
};
using LumpWork = std::vector<ShellWork>;

class BodyBuilder {
  public:
    BodyBuilder(const Model& m, long body, std::size_t& left) : mModel(m), mBodyRecord(body), mBudget(left) {}

    BuiltBody Run() {
        Collect();
        PlanFaces(mPlans, mNodes);
        MakeEdges(mNodes);
        for (const FacePlan& plan : mPlans) mFaces.push_back(MakeFaces(plan, mNodes));
        SettleTolerances(mNodes);
        return Assemble();
    }

  private:
    void Collect();
    void Place(long transform);
    LumpWork CollectLump(const LumpRecord& lump);
    ShellWork CollectShell(long index);
    void CollectFace(ShellWork& shell, long index);
    std::vector<LoopUse> CollectLoops(const FaceRecord& face);
    LoopUse CollectLoop(long coedge);
    CoedgeUse Use(const CoedgeRecord& coedge);
    Handle(Geom2d_Curve) Given(const CoedgeRecord& coedge) const;
    int VertexNodeOf(long record);
    int EdgeNodeOf(long record, const EdgeRecord& edge);
    void CheckChain(const LoopUse& loop, long record) const;
    SurfaceFrame FittingFrame(long record, const std::vector<LoopUse>& loops) const;
    double Misfit(const SurfaceFrame& frame, const std::vector<LoopUse>& loops) const;

    BuiltBody Assemble();
    void TellHealing();
    void MakeShell(ShellWork& shell);
    TopoDS_Shape MakeLump(LumpWork& lump);
    bool IsClosed(const ShellWork& shell) const;

    /// Steps through a chain of records, refusing one that is met twice.
    void Visit(long index) {
        if (!mVisited.insert(index).second) throw BadRecord(index, "the record is reached twice");
        if (mBudget == 0) throw BadRecord(index, "too many bodies lead through the same records");
        --mBudget;
    }

    const Model& mModel;
    long mBodyRecord;
    std::size_t& mBudget;
    Placement mPlacement;
    std::unordered_set<long> mVisited;
    std::unordered_map<long, int> mVertexNodes, mEdgeNodes;
    Nodes mNodes;
    std::vector<FacePlan> mPlans;
    std::vector<MadeFaces> mFaces;
    std::vector<LumpWork> mLumps;
    std::vector<Problem> mRemarks;
};

void BodyBuilder::Collect() {
    const BodyRecord body = mModel.Body(mBodyRecord);
    if (body.transform >= 0) Place(body.transform);
    if (body.lump < 0) {
        throw BadRecord(mBodyRecord,
                        body.wire >= 0 ? "a body of wires is not read; expected lumps" : "the body is empty");
    }
    if (body.wire >= 0) {
        mRemarks.push_back(
            {mModel.At(mBodyRecord).line, mBodyRecord, "wires beside the lumps of a body are left out"});
    }
    for (long lump = body.lump; lump >= 0;) {
        Visit(lump);
        const LumpRecord record = mModel.Lump(lump);
        mLumps.push_back(CollectLump(record));
        lump = record.next;
    }
}

void BodyBuilder::Place(long transform) {
    const TransformRecord record = mModel.Transform(transform);
    mPlacement = Placement(record, transform);
    const auto doubt = [&](const std::string& why) {
        mRemarks.push_back(
            {mModel.At(transform).line, transform, "transform: " + why + ": it may be damaged"});
    };
    if (!record.unknownMark.empty()) doubt("its mark " + record.unknownMark + " is none that there is");
    if (record.reflects && *record.reflects != mPlacement.Mirrors())
        doubt(mPlacement.Mirrors() ? "its numbers mirror the body, and its mark says that they don't"
                                   : "its mark says that it mirrors the body, and its numbers don't");
}

LumpWork BodyBuilder::CollectLump(const LumpRecord& lump) {
    LumpWork work;
    for (long shell = lump.shell; shell >= 0;) {
        Visit(shell);
        work.push_back(CollectShell(shell));
        shell = mModel.Shell(shell).next;
    }
    if (work.empty()) throw BadRecord(mBodyRecord, "a lump without a shell");
    return work;
}

ShellWork BodyBuilder::CollectShell(long index) {
    const ShellRecord record = mModel.Shell(index);
    if (record.wire >= 0) throw BadRecord(index, "a shell with wires is not read; expected faces alone");
    ShellWork shell;
    shell.record = index;
    for (long face = record.face; face >= 0;) {
        CollectFace(shell, face);
        face = mModel.Face(face).next;
    }
    if (record.subshell >= 0) {
        // Faces of subshells name their shell all the same.
        for (long other = 0; other < static_cast<long>(mModel.Count()); ++other) {
            if (mModel.At(other).name != "face" || mVisited.count(other) != 0) continue;
            if (mModel.Face(other).shell == index) CollectFace(shell, other);
        }
    }
    if (shell.faces.empty()) throw BadRecord(index, "a shell without a face");
    shell.sheet = mPlans[shell.faces.front()].doubleSided;
    for (const std::size_t face : shell.faces) {
        if (mPlans[face].doubleSided != shell.sheet)
            throw BadRecord(mPlans[face].record, "single and double sided faces in one shell are not read");
    }
    return shell;
}

void BodyBuilder::CollectFace(ShellWork& shell, long index) {
    Visit(index);
    const FaceRecord record = mModel.Face(index);
    FacePlan plan;
    plan.record = index;
    plan.doubleSided = record.doubleSided;
    plan.loops = CollectLoops(record);
    plan.frame = FittingFrame(record.surface, plan.loops);
    plan.naturalSide = plan.frame.insideOut == record.reversed;
    const bool whole =
        plan.frame.kind == SurfaceFrame::Kind::Sphere || plan.frame.kind == SurfaceFrame::Kind::Torus;
    if (plan.loops.empty() && !whole)
        throw BadRecord(index, "a face without loops; expected a sphere or a torus");
    shell.faces.push_back(mPlans.size());
    mPlans.push_back(std::move(plan));
}

std::vector<LoopUse> BodyBuilder::CollectLoops(const FaceRecord& face) {
    std::vector<LoopUse> loops;
    for (long loop = face.loop; loop >= 0;) {
        Visit(loop);
        const LoopRecord record = mModel.Loop(loop);
        LoopUse use = CollectLoop(record.coedge);
        // A loop of nothing but an apex leaves none: the spread point is found on the surface.
        if (!use.empty()) {
            CheckChain(use, loop);
            if (mPlacement.Mirrors()) {
                std::reverse(use.begin(), use.end());
                for (CoedgeUse& coedge : use) coedge.forward = !coedge.forward;
            }
            loops.push_back(std::move(use));
        }
        loop = record.next;
    }
    return loops;
}

LoopUse BodyBuilder::CollectLoop(long first) {
    LoopUse loop;
    for (long coedge = first;;) {
        Visit(coedge);
        const CoedgeRecord record = mModel.Coedge(coedge);
        const CoedgeUse use = Use(record);
        if (use.edge >= 0) loop.push_back(use);
        coedge = record.next;
        if (coedge == first) return loop;
        if (coedge < 0) throw BadRecord(first, "an open loop; expected its last coedge to lead back here");
    }
}

CoedgeUse BodyBuilder::Use(const CoedgeRecord& coedge) {
    const EdgeRecord edge = mModel.Edge(coedge.edge);
    // An apex stands as an edge that has a vertex but no curve.
    if (edge.curve < 0) return {};
    return {EdgeNodeOf(coedge.edge, edge), !coedge.reversed, Given(coedge)};
}

// The curve on the surface repeats the curve in space; a damaged one is computed again.
Handle(Geom2d_Curve) BodyBuilder::Given(const CoedgeRecord& coedge) const {
    if (coedge.pcurve < 0) return {};
    try {
        const auto pcurve = mModel.Pcurve(coedge.pcurve);
        if (pcurve) return MakePlaneSpline(*pcurve);
    } catch (const BadRecord&) {
    } catch (const Standard_Failure&) {
    }
    return {};
}

int BodyBuilder::VertexNodeOf(long record) {
    const auto [place, fresh] = mVertexNodes.try_emplace(record, static_cast<int>(mNodes.vertices.size()));
    if (fresh) {
        VertexNode node;
        node.place = mPlacement.Point(mModel.VertexPoint(record));
        mNodes.vertices.push_back(node);
    }
    return place->second;
}

int BodyBuilder::EdgeNodeOf(long record, const EdgeRecord& edge) {
    if (const auto known = mEdgeNodes.find(record); known != mEdgeNodes.end()) return known->second;
    EdgeNode node;
    node.record = record;
    node.start = VertexNodeOf(edge.start);
    node.end = VertexNodeOf(edge.end);
    VertexNode& start = mNodes.vertices[static_cast<std::size_t>(node.start)];
    VertexNode& end = mNodes.vertices[static_cast<std::size_t>(node.end)];
    const EdgeCurve curve = MakeEdgeCurve(mModel.Curve(edge.curve), edge.reversed, start.place, end.place,
                                          node.start == node.end, mPlacement, record);
    node.curve = curve.curve;
    node.first = curve.first;
    node.last = curve.last;
    node.tolerance = std::max(node.tolerance, 1.1 * curve.misfit);
    ++start.edgeCount;
    if (node.start != node.end) ++end.edgeCount;
    const int index = static_cast<int>(mNodes.edges.size());
    mNodes.edges.push_back(node);
    mEdgeNodes.emplace(record, index);
    return index;
}

void BodyBuilder::CheckChain(const LoopUse& loop, long record) const {
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const EdgeNode& edge = mNodes.edges[static_cast<std::size_t>(loop[i].edge)];
        const CoedgeUse& nextUse = loop[(i + 1) % loop.size()];
        const EdgeNode& next = mNodes.edges[static_cast<std::size_t>(nextUse.edge)];
        if ((loop[i].forward ? edge.end : edge.start) != (nextUse.forward ? next.start : next.end))
            throw BadRecord(record, "a loop whose edges do not meet in their vertices");
    }
}

double BodyBuilder::Misfit(const SurfaceFrame& frame, const std::vector<LoopUse>& loops) const {
    double widest = 0;
    for (const LoopUse& loop : loops) {
        for (const CoedgeUse& use : loop) {
            const EdgeNode& edge = mNodes.edges[static_cast<std::size_t>(use.edge)];
            for (const double share : {0.0, 0.5}) {
                const gp_Pnt point = edge.curve->Value(edge.first + share * (edge.last - edge.first));
                widest = std::max(widest, frame.Value(frame.Parameters(point)).Distance(point));
            }
        }
    }
    return widest;
}

SurfaceFrame BodyBuilder::FittingFrame(long record, const std::vector<LoopUse>& loops) const {
    const SurfaceRecord surface = mModel.Surface(record);
    SurfaceFrame frame = MakeFrame(surface, mPlacement, record);
    if (frame.kind != SurfaceFrame::Kind::Cone) return frame;
    if (const double misfit = Misfit(frame, loops); misfit > LooseFit) {
        const SurfaceFrame other = MakeFrame(surface, mPlacement, record, true);
        if (Misfit(other, loops) < misfit) return other;
    }
    return frame;
}

bool BodyBuilder::IsClosed(const ShellWork& shell) const {
    std::map<int, int> balance;
    std::map<int, int> count;
    for (const std::size_t face : shell.faces) {
        const FacePlan& plan = mPlans[face];
        for (const LoopUse& loop : plan.loops) {
            for (const CoedgeUse& use : loop) {
                balance[use.edge] += use.forward == plan.naturalSide ? 1 : -1;
                ++count[use.edge];
            }
        }
    }
    return std::all_of(balance.begin(), balance.end(),
                       [&](const auto& entry) { return entry.second == 0 && count[entry.first] >= 2; });
}

double SignedVolume(const TopoDS_Shell& shell) {
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shell, properties);
    return properties.Mass();
}

void BodyBuilder::MakeShell(ShellWork& shell) {
    BRep_Builder builder;
    builder.MakeShell(shell.shape);
    double flux = 0;
    double terms = 0;
    bool free = false;
    for (const std::size_t index : shell.faces) {
        for (const TopoDS_Face& face : mFaces[index].faces) builder.Add(shell.shape, face);
        free = free || mPlans[index].frame.kind == SurfaceFrame::Kind::Free;
        flux += mFaces[index].flux;
        terms += std::abs(mFaces[index].flux);
    }
    // A thin skin far around the origin drowns in rounding; then the modeller has to integrate, as over free
    // surfaces.
    shell.volume = !free && std::abs(flux) > 1e-3 * terms ? flux / 3 : SignedVolume(shell.shape);
    shell.closed = !shell.sheet && IsClosed(shell);
    shell.shape.Closed(shell.closed);
}

// The shell around everything looks outward and those within it inward, whatever the signs of a lone
// sphere say.
TopoDS_Shape MakeSolid(std::vector<ShellWork> shells) {
    std::stable_sort(shells.begin(), shells.end(), [](const ShellWork& a, const ShellWork& b) {
        return std::abs(a.volume) > std::abs(b.volume);
    });
    BRep_Builder builder;
    TopoDS_Solid solid;
    builder.MakeSolid(solid);
    for (std::size_t i = 0; i < shells.size(); ++i) {
        const ShellWork& shell = shells[i];
        if (!std::isfinite(shell.volume) || shell.volume == 0)
            throw BadRecord(shell.record, "a shell that encloses nothing");
        const bool outward = shell.volume > 0;
        builder.Add(solid, outward == (i == 0) ? shell.shape : TopoDS::Shell(shell.shape.Reversed()));
    }
    return solid;
}

TopoDS_Shape BodyBuilder::MakeLump(LumpWork& lump) {
    std::vector<ShellWork> closed;
    BRep_Builder builder;
    TopoDS_Compound loose;
    builder.MakeCompound(loose);
    int looseFaces = 0;
    TopoDS_Shape last;
    for (ShellWork& shell : lump) {
        MakeShell(shell);
        if (shell.closed) {
            closed.push_back(shell);
            continue;
        }
        if (!shell.sheet) {
            const Record& record = mModel.At(shell.record);
            mRemarks.push_back(
                {record.line, shell.record, "a shell that is not closed; taken as loose faces"});
        }
        for (const std::size_t index : shell.faces) {
            for (const TopoDS_Face& face : mFaces[index].faces) {
                builder.Add(loose, face);
                last = face;
                ++looseFaces;
            }
        }
    }
    if (!closed.empty() && looseFaces > 0)
        throw BadRecord(mBodyRecord, "a lump of solids and sheets together is not read");
    if (!closed.empty()) return MakeSolid(std::move(closed));
    return looseFaces == 1 ? last : TopoDS_Shape(loose);
}

// Gaps that no other program would have left are closed by tolerances, and reported once for the body.
void BodyBuilder::TellHealing() {
    std::size_t loose = 0;
    double widest = 0;
    for (const EdgeNode& edge : mNodes.edges) {
        if (edge.tolerance <= 1.1 * LooseFit) continue;
        ++loose;
        widest = std::max(widest, edge.tolerance / 1.1);
    }
    if (loose == 0) return;
    char gap[32];
    *std::to_chars(gap, gap + sizeof gap - 1, widest, std::chars_format::general, 2).ptr = '\0';
    mRemarks.push_back({mModel.At(mBodyRecord).line, mBodyRecord,
                        std::to_string(loose) + (loose == 1 ? " edge lies" : " edges lie") + " up to " + gap +
                            " beside their faces or corners; healed",
                        false});
}

BuiltBody BodyBuilder::Assemble() {
    TellHealing();
    std::vector<TopoDS_Shape> parts;
    for (LumpWork& lump : mLumps) {
        const TopoDS_Shape shape = MakeLump(lump);
        if (shape.ShapeType() != TopAbs_COMPOUND) {
            parts.push_back(shape);
            continue;
        }
        for (TopoDS_Iterator face(shape); face.More(); face.Next()) parts.push_back(face.Value());
    }
    if (parts.size() == 1) return {parts.front(), std::move(mRemarks)};
    BRep_Builder builder;
    TopoDS_Compound compound;
    builder.MakeCompound(compound);
    for (const TopoDS_Shape& part : parts) builder.Add(compound, part);
    return {compound, std::move(mRemarks)};
}

}  // namespace

BuiltBody BuildBody(const Model& model, long index, std::size_t& budget) {
    try {
        return BodyBuilder(model, index, budget).Run();
    } catch (const Standard_Failure& failure) {
        const char* told = failure.GetMessageString();
        throw BadRecord(index,
                        std::string("the body cannot be built: ") + failure.DynamicType()->Name() +
                            (told != nullptr && *told != '\0' ? std::string(", ") + told : std::string()));
    }
}

}  // namespace brenvik::acis
