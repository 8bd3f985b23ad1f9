// Taking wires apart. The modeller runs one wire over both loops of a full round and the seam between;
// without the seam the remaining edges fall into the loops they make with their vertices.
#include "drafting_host/acis/face_loops.h"

#include "drafting_host/acis/acis_text.h"

#include <BRepTools_WireExplorer.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Wire.hxx>

#include <algorithm>

namespace brenvik::acis {
namespace {

bool IsBoundary(const TopoDS_Edge& edge) {
    return edge.Orientation() == TopAbs_FORWARD || edge.Orientation() == TopAbs_REVERSED;
}

/// Whether the edges are stored as they are walked: each begins where the one before it ends, round to the
/// first, and no point is passed twice. Only where one is, their curves in the face decide on the way.
bool IsPlainRound(const std::vector<TopoDS_Edge>& edges) {
    constexpr std::size_t most = 64;  // All pairs are compared.
    if (edges.empty() || edges.size() > most) return false;
    std::vector<TopoDS_Vertex> starts;
    TopoDS_Vertex end = TopExp::LastVertex(edges.back(), true);
    for (const TopoDS_Edge& edge : edges) {
        const TopoDS_Vertex start = TopExp::FirstVertex(edge, true);
        const auto isStart = [&start](const TopoDS_Vertex& other) { return other.IsSame(start); };
        if (start.IsNull() || !start.IsSame(end) || std::ranges::any_of(starts, isStart)) return false;
        starts.push_back(start);
        end = TopExp::LastVertex(edge, true);
    }
    return true;
}

// Edges of a wire in walking order; in the order of the wire where the modeller cannot follow it.
std::vector<TopoDS_Edge> Walk(const TopoDS_Wire& wire, const TopoDS_Face& face) {
    std::vector<TopoDS_Edge> stored;
    for (TopoDS_Iterator edge(wire); edge.More(); edge.Next()) {
        const TopoDS_Edge& part = TopoDS::Edge(edge.Value());
        if (IsBoundary(part)) stored.push_back(part);
    }
    if (IsPlainRound(stored)) return stored;
    std::vector<TopoDS_Edge> walked;
    for (BRepTools_WireExplorer explorer(wire, face); explorer.More() && walked.size() <= stored.size();
         explorer.Next()) {
        walked.push_back(explorer.Current());
    }
    return walked.size() == stored.size() ? walked : stored;
}

class Taker {
  public:
    Taker(const TopoDS_Face& f, std::string n)
        : mName(std::move(n)),
          mFace(TopoDS::Face(f.Oriented(TopAbs_FORWARD))),
          mReversed(f.Orientation() == TopAbs_REVERSED) {}

    FaceLoops Run() {
        for (TopoDS_Iterator part(mFace); part.More(); part.Next())
            if (part.Value().ShapeType() == TopAbs_WIRE) Take(TopoDS::Wire(part.Value()));
        KeepLonePoints();
        return std::move(mResult);
    }

  private:
    void Take(const TopoDS_Wire& wire) {
        std::vector<TopoDS_Edge> edges;
        const std::vector<TopoDS_Edge> walk = Walk(wire, mFace);
        // A cut along a seam leaves edges that know both sides of it but bound the face on one only.
        const auto isSeam = [&](const TopoDS_Edge& edge) {
            return BRep_Tool::IsClosed(edge, mFace) &&
                   std::count_if(walk.begin(), walk.end(),
                                 [&](const TopoDS_Edge& e) { return e.IsSame(edge); }) == 2;
        };
        for (const TopoDS_Edge& edge : walk) {
            if (BRep_Tool::Degenerated(edge))
                mSpreadPoints.push_back(TopExp::FirstVertex(edge));
            else if (!isSeam(edge))
                edges.push_back(mReversed ? TopoDS::Edge(edge.Reversed()) : edge);
        }
        if (mReversed) std::reverse(edges.begin(), edges.end());
        std::vector<bool> used(edges.size(), false);
        for (std::size_t first = 0; first < edges.size(); ++first)
            if (!used[first]) mResult.loops.push_back(Follow(edges, used, first));
    }

    // From an edge to the next that starts where it ends, the nearest in walking order first, until the
    // loop is back at its start.
    std::vector<TopoDS_Edge> Follow(const std::vector<TopoDS_Edge>& edges, std::vector<bool>& used,
                                    std::size_t first) const {
        std::vector<TopoDS_Edge> loop;
        const TopoDS_Vertex start = TopExp::FirstVertex(edges[first], true);
        for (std::size_t at = first;;) {
            used[at] = true;
            loop.push_back(edges[at]);
            const TopoDS_Vertex end = TopExp::LastVertex(edges[at], true);
            if (end.IsNull() || start.IsNull()) throw WriteFailure(mName + " has an edge without vertices");
            if (end.IsSame(start)) return loop;
            std::size_t step = 1;
            for (; step < edges.size(); ++step) {
                const std::size_t next = (at + step) % edges.size();
                if (!used[next] && TopExp::FirstVertex(edges[next], true).IsSame(end)) break;
            }
            if (step >= edges.size()) throw WriteFailure(mName + " has a boundary that is not closed");
            at = (at + step) % edges.size();
        }
    }

    void KeepLonePoints() {
        for (const TopoDS_Vertex& point : mSpreadPoints) {
            bool passed = false;
            for (const auto& loop : mResult.loops) {
                for (const TopoDS_Edge& edge : loop)
                    passed = passed || TopExp::FirstVertex(edge, true).IsSame(point);
            }
            if (!passed) mResult.spreadPoints.push_back(point);
        }
    }

    std::string mName;
    TopoDS_Face mFace;
    bool mReversed;
    std::vector<TopoDS_Vertex> mSpreadPoints;
    FaceLoops mResult;
};

}  // namespace

std::vector<std::vector<FreeUse>> FreeLoopsOf(const TopoDS_Face& face, const std::string& name) {
    const TopoDS_Face forward = TopoDS::Face(face.Oriented(TopAbs_FORWARD));
    const bool reversed = face.Orientation() == TopAbs_REVERSED;
    std::vector<std::vector<FreeUse>> loops;
    for (TopoDS_Iterator part(forward); part.More(); part.Next()) {
        if (part.Value().ShapeType() != TopAbs_WIRE) continue;
        std::vector<FreeUse> loop;
        for (const TopoDS_Edge& edge : Walk(TopoDS::Wire(part.Value()), forward)) {
            if (BRep_Tool::Degenerated(edge)) continue;
            loop.push_back({reversed ? TopoDS::Edge(edge.Reversed()) : edge, edge});
        }
        if (reversed) std::reverse(loop.begin(), loop.end());
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const TopoDS_Vertex end = TopExp::LastVertex(loop[i].edge, true);
            const TopoDS_Vertex start = TopExp::FirstVertex(loop[(i + 1) % loop.size()].edge, true);
            if (end.IsNull() || start.IsNull()) throw WriteFailure(name + " has an edge without vertices");
            if (!end.IsSame(start)) throw WriteFailure(name + " has a boundary that is not closed");
        }
        if (!loop.empty()) loops.push_back(std::move(loop));
    }
    return loops;
}

FaceLoops LoopsOf(const TopoDS_Face& face, const std::string& name) { return Taker(face, name).Run(); }

}  // namespace brenvik::acis
