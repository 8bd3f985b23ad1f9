// Ends are gathered into nodes by a grid, so that a chain is followed from node to node.
#include "drafting_host/command/commands/polyline_chain.h"

#include <algorithm>

#include "drafting_host/command/commands/end_nodes.h"
#include "drafting_host/command/commands/polyline_links.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

namespace {

/// The plane of a chain, with its height along its normal.
struct ChainPlane {
    Axes axes;
    double height = 0;
    double fuzz = JoinFuzz;

    ChainPlane(const Point3& normal, const Point3& place, double fineness)
        : axes(ObjectAxes(normal)), height(FromWorld(axes, place).z), fuzz(fineness) {}

    bool Holds(const Point3& p) const { return std::abs(Dot(axes.z, p) - height) <= fuzz; }
    bool Holds(const Link& link) const {
        if (link.normal && std::abs(std::abs(Dot(axes.z, *link.normal)) - 1) > 1e-9) return false;
        return std::ranges::all_of(link.pieces, [&](const LinkPiece& piece) {
            return Holds(piece.from) && Holds(piece.to) && (piece.sweep == 0 || Holds(piece.middle));
        });
    }
};

bool Touch(const Link& one, const Link& other, double fuzz) {
    const auto near = [fuzz](const Point3& a, const Point3& b) { return Distance(a, b) <= fuzz; };
    return near(one.From(), other.From()) || near(one.From(), other.To()) || near(one.To(), other.From()) ||
           near(one.To(), other.To());
}

bool HasNeighbour(const std::vector<Link>& links, const Link& subject, const ChainPlane& plane) {
    return std::ranges::any_of(links, [&](const Link& link) {
        return link.object != subject.object && plane.Holds(link) && Touch(link, subject, plane.fuzz);
    });
}

/// The plane through a straight link and a neighbour of it, or null where none turns off.
std::optional<Point3> NormalWithNeighbour(const std::vector<Link>& links, const Link& subject, double fuzz) {
    const Point3 along = Unit(subject.To() - subject.From());
    for (const Link& link : links) {
        if (link.object == subject.object || !Touch(link, subject, fuzz)) continue;
        if (link.normal) {
            if (std::abs(Dot(*link.normal, along)) < 1e-9) return link.normal;
            continue;
        }
        const Point3 across = Cross(along, Unit(link.To() - link.From()));
        if (Length(across) > 1e-6) return Unit(across);
    }
    return std::nullopt;
}

ChainPlane PlaneOf(const std::vector<Link>& links, const Link& subject, double fuzz) {
    if (subject.normal) return {LevelIfFlat(*subject.normal), subject.From(), fuzz};
    std::vector<Point3> normals = NormalsOfStraight(subject);
    if (const auto shared = NormalWithNeighbour(links, subject, fuzz))
        normals.push_back(LevelIfFlat(*shared));
    for (const Point3& normal : normals) {
        const ChainPlane plane(normal, subject.From(), fuzz);
        if (HasNeighbour(links, subject, plane)) return plane;
    }
    return {normals.front(), subject.From(), fuzz};
}

/// A link as the chain runs along it.
struct Step {
    std::size_t link = 0;
    bool backward = false;
};

class Chain {
  public:
    Chain(std::vector<Link> links, std::size_t subject, const ChainPlane& plane)
        : mLinks(std::move(links)), mPlane(plane), mNodes(plane.fuzz) {
        for (std::size_t at = 0; at < mLinks.size(); ++at) AddEnds(at);
        mUsed.resize(mLinks.size());
        Take({subject, false}, mForward);
    }

    void Grow() {
        if (mEnds[mForward.front().link].from == mEnds[mForward.front().link].to) {
            mClosed = Round(mLinks[mForward.front().link]);
            if (mClosed) return;
        }
        while (!mClosed && Extend(mForward, false)) mClosed = End() == Begin();
        while (!mClosed && Extend(mBackward, true)) mClosed = End() == Begin();
    }

    JoinedChain Result(const LWPolylineData& like) const;

  private:
    struct EndPair {
        std::size_t from = 0, to = 0;
    };

    static bool Round(const Link& link) { return link.pieces.size() > 1; }

    void AddEnds(std::size_t at) {
        const Link& link = mLinks[at];
        const auto node = [&](const Point3& p, const LinkPiece& piece) {
            // The end of a line was drawn; that of an arc is worked out from its angles.
            return mNodes.Put(FromWorld(mPlane.axes, p), piece.sweep == 0);
        };
        mEnds.push_back({node(link.From(), link.pieces.front()), node(link.To(), link.pieces.back())});
        mAtNode.resize(mNodes.Count());
        mAtNode[mEnds[at].from].push_back(at);
        if (mEnds[at].to != mEnds[at].from) mAtNode[mEnds[at].to].push_back(at);
    }

    std::size_t NodeBefore(const Step& step) const {
        return step.backward ? mEnds[step.link].to : mEnds[step.link].from;
    }
    std::size_t NodeAfter(const Step& step) const {
        return step.backward ? mEnds[step.link].from : mEnds[step.link].to;
    }
    std::size_t Begin() const { return NodeBefore(mBackward.empty() ? mForward.front() : mBackward.back()); }
    std::size_t End() const { return NodeAfter(mForward.back()); }

    bool SameEnds(std::size_t one, std::size_t other) const {
        const EndPair a = mEnds[one], b = mEnds[other];
        return (a.from == b.from && a.to == b.to) || (a.from == b.to && a.to == b.from);
    }

    void Take(const Step& step, std::vector<Step>& steps) {
        mUsed[step.link] = true;
        steps.push_back(step);
        for (const std::size_t other : mAtNode[mEnds[step.link].from]) {
            if (mUsed[other] || !SameEnds(step.link, other)) continue;
            if (!SameCurve(mLinks[step.link], mLinks[other], mPlane.fuzz)) continue;
            mUsed[other] = true;
            mTwins.push_back(mLinks[other].object);
        }
    }

    /// Extends the chain at one end; false if no curve begins there.
    bool Extend(std::vector<Step>& steps, bool atBegin) {
        const std::size_t node = atBegin ? Begin() : End();
        std::optional<std::size_t> next;
        for (const std::size_t link : mAtNode[node]) {
            if (mUsed[link]) continue;
            if (mEnds[link].from == mEnds[link].to) {
                // A piece without length adds nothing to the chain; a ring is a chain of its own.
                if (Round(mLinks[link])) continue;
                mUsed[link] = true;
                mTwins.push_back(mLinks[link].object);
                continue;
            }
            if (!next) {
                next = link;
            } else if (!SameEnds(*next, link) || !SameCurve(mLinks[*next], mLinks[link], mPlane.fuzz)) {
                mBranches.push_back(node);
                break;
            }
        }
        if (!next) return false;
        const bool startsHere = mEnds[*next].from == node;
        Take({*next, atBegin ? startsHere : !startsHere}, steps);
        return true;
    }

    void Draw(const Step& step, LWPolylineData& polyline) const;

    std::vector<Link> mLinks;
    ChainPlane mPlane;
    EndNodes mNodes;
    std::vector<EndPair> mEnds;
    std::vector<std::vector<std::size_t>> mAtNode;
    std::vector<char> mUsed;
    std::vector<Step> mForward, mBackward;
    std::vector<std::size_t> mTwins, mBranches;
    bool mClosed = false;
};

/// Adds the vertices of a step, all but the last.
void Chain::Draw(const Step& step, LWPolylineData& polyline) const {
    const std::vector<LinkPiece>& pieces = mLinks[step.link].pieces;
    const bool sameSide = !mLinks[step.link].normal || Dot(*mLinks[step.link].normal, mPlane.axes.z) > 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const LinkPiece& piece = pieces[step.backward ? pieces.size() - 1 - i : i];
        const Point3 place = i == 0 ? mNodes.Place(NodeBefore(step))
                                    : FromWorld(mPlane.axes, step.backward ? piece.to : piece.from);
        const double bulge = BulgeOf(sameSide != step.backward ? piece.sweep : -piece.sweep);
        polyline.vertices.push_back({place.x, place.y, bulge, 0, 0});
    }
}

JoinedChain Chain::Result(const LWPolylineData& like) const {
    JoinedChain result;
    result.polyline = like;
    result.polyline.vertices.clear();
    std::vector<Step> steps(mBackward.rbegin(), mBackward.rend());
    steps.insert(steps.end(), mForward.begin(), mForward.end());
    for (const Step& step : steps) {
        Draw(step, result.polyline);
        result.parts.push_back(mLinks[step.link].object);
    }
    if (!mClosed) {
        // A single piece without length keeps both its vertices.
        const Point3 end = mNodes.Place(End());
        result.polyline.vertices.push_back({end.x, end.y, 0, 0, 0});
    }
    result.polyline.closed = mClosed;
    result.polyline.elevation = mPlane.height;
    result.polyline.normal = mPlane.axes.z;
    result.twins = mTwins;
    for (const std::size_t node : mBranches)
        result.branches.push_back(ToWorld(mPlane.axes, mNodes.Place(node)));
    return result;
}

}  // namespace

std::optional<LWPolylineData> AsPolyline(const HostGeometry& geometry) {
    if (std::holds_alternative<LWPolylineData>(geometry)) return std::get<LWPolylineData>(geometry);
    if (!LinkOf(geometry, 0)) return std::nullopt;
    return JoinChain(std::span(&geometry, 1), 0).polyline;
}

JoinedChain JoinChain(std::span<const HostGeometry> objects, std::size_t first, double fuzz) {
    JoinedChain alone;
    if (const auto* polyline = std::get_if<LWPolylineData>(&objects[first]); polyline != nullptr) {
        alone.polyline = *polyline;
        alone.parts = {first};
        if (polyline->closed || polyline->vertices.size() < 2) return alone;
    }
    std::vector<Link> links;
    std::optional<Link> subject;
    for (std::size_t at = 0; at < objects.size(); ++at) {
        std::optional<Link> link = LinkOf(objects[at], at);
        if (!link) continue;
        if (at == first) subject = link;
        links.push_back(std::move(*link));
    }
    if (!subject) return alone;
    const ChainPlane plane = PlaneOf(links, *subject, fuzz);
    std::erase_if(links, [&](const Link& link) { return link.object != first && !plane.Holds(link); });
    const auto at = std::ranges::find(links, first, &Link::object);
    Chain chain(std::move(links), static_cast<std::size_t>(at - links.begin()), plane);
    chain.Grow();
    LWPolylineData like = alone.polyline;
    like.thickness = subject->thickness;
    return chain.Result(like);
}

}  // namespace brenvik
