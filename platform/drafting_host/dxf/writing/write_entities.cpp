// Entities: the common part of their records, their extended data, polylines of many records.
#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/handle_text.h"
#include "base/hex.h"
#include "drafting_host/dxf/data/entity_name.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/data/standard_entries.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/writing/writing.h"

namespace brenvik {
namespace {

struct Place {
    HandleValue record = 0;
    bool isPaper = false;
};

void WriteCommon(GroupWriter& out, const WritePlan& plan, std::string_view name, const EntityData& entity,
                 HandleValue handle, HandleValue owner, bool isPaper) {
    out.Word(0, name);
    out.HandleGroup(5, handle);
    if (entity.kept) WriteKept(out, plan, name, entity.kept->head);
    out.HandleGroup(330, owner);
    out.Word(100, "AcDbEntity");
    if (isPaper) out.Whole(67, 1);
    out.Text(8, entity.layer);
    if (entity.linetype != "ByLayer") out.Text(6, entity.linetype);
    if (entity.color >= 0 && entity.color < 256) out.Whole(62, entity.color);
    if (entity.lineweight != -1) out.Whole(370, entity.lineweight);
    out.RealUnless(48, entity.linetypeScale, 1);
    if (!entity.visible) out.Whole(60, 1);
    if (entity.kept) WriteKept(out, plan, name, entity.kept->common);
}

void WriteOwnAndFurther(GroupWriter& out, const WritePlan& plan, std::string_view name,
                        const EntityData& entity) {
    if (!entity.kept) return;
    WriteKept(out, plan, name, entity.kept->own);
    WriteKept(out, plan, name, entity.kept->further);
}

constexpr int Flag3d = 8, FlagMesh = 16, FlagPolyface = 64, FlagFaceVertex = 128;

std::string_view PolylineClass(int flags) {
    if ((flags & FlagPolyface) != 0) return "AcDbPolyFaceMesh";
    if ((flags & FlagMesh) != 0) return "AcDbPolygonMesh";
    return (flags & Flag3d) != 0 ? "AcDb3dPolyline" : "AcDb2dPolyline";
}

void WriteVertexClasses(GroupWriter& out, int polylineFlags, int vertexFlags) {
    if ((polylineFlags & FlagPolyface) != 0 && (vertexFlags & FlagFaceVertex) != 0 &&
        (vertexFlags & FlagPolyface) == 0) {
        out.Word(100, "AcDbFaceRecord");
        return;
    }
    out.Word(100, "AcDbVertex");
    if ((polylineFlags & FlagPolyface) != 0)
        out.Word(100, "AcDbPolyFaceMeshVertex");
    else if ((polylineFlags & FlagMesh) != 0)
        out.Word(100, "AcDbPolygonMeshVertex");
    else
        out.Word(100, (polylineFlags & Flag3d) != 0 ? "AcDb3dPolylineVertex" : "AcDb2dVertex");
}

void WriteVertex(GroupWriter& out, int polylineFlags, const PolylineData::Vertex& vertex) {
    WriteVertexClasses(out, polylineFlags, vertex.flags);
    out.Point(10, vertex.point);
    out.RealUnless(40, vertex.startWidth, 0);
    out.RealUnless(41, vertex.endWidth, 0);
    out.RealUnless(42, vertex.bulge, 0);
    if (vertex.flags != 0) out.Whole(70, vertex.flags);
    for (std::size_t i = 0; i < vertex.faceIndices.size(); ++i)
        if (vertex.faceIndices[i] != 0) out.Whole(71 + static_cast<int>(i), vertex.faceIndices[i]);
}

void WritePolylineHead(GroupWriter& out, const PolylineData& data) {
    out.Word(100, PolylineClass(data.flags));
    out.Whole(66, 1);
    out.Point(10, {0, 0, data.elevation});
    out.RealUnless(39, data.thickness, 0);
    out.Whole(70, data.flags);
    const std::array<std::pair<int, int>, 5> counts{{{71, data.mCount},
                                                     {72, data.nCount},
                                                     {73, data.mDensity},
                                                     {74, data.nDensity},
                                                     {75, data.surfaceType}}};
    for (const auto& [code, value] : counts)
        if (value != 0) out.Whole(code, value);
    out.Normal(data.normal);
}

// A vertex of a polyline, or its end, up to its own values. Most have the layer of the polyline and nothing
// else.
const KeptGroups::Vertex* WriteVertexHead(GroupWriter& out, const WritePlan& plan, std::string_view name,
                                          const EntityData& polyline, HandleValue read, HandleValue handle,
                                          const Place& place) {
    const KeptGroups::Vertex* kept = nullptr;
    if (polyline.kept) {
        const auto& vertices = polyline.kept->vertices;
        const auto found = std::ranges::lower_bound(vertices, read, {}, &KeptGroups::Vertex::handle);
        if (found != vertices.end() && found->handle == read) kept = &*found;
    }
    out.Word(0, name);
    out.HandleGroup(5, handle);
    if (kept != nullptr) WriteKept(out, plan, name, kept->head);
    out.HandleGroup(330, place.record);
    out.Word(100, "AcDbEntity");
    if (place.isPaper) out.Whole(67, 1);
    if (kept == nullptr || !kept->hasLayer) out.Text(8, polyline.layer);
    if (kept != nullptr) WriteKept(out, plan, name, kept->common);
    return kept;
}

// The record of the polyline itself, its vertices and its end; `handles` begins with the polyline's own.
void WritePolyline(GroupWriter& out, const WritePlan& plan, const EntityData& entity,
                   const PolylineData& data, const HandleValue* handles, const Place& place) {
    const HandleValue own = *handles++;
    WriteCommon(out, plan, "POLYLINE", entity, own, place.record, place.isPaper);
    WritePolylineHead(out, data);
    WriteOwnAndFurther(out, plan, "POLYLINE", entity);
    WriteXData(out, plan, entity.xdata);
    const Place inPolyline{own, place.isPaper};
    for (const PolylineData::Vertex& vertex : data.vertices) {
        const auto* const kept =
            WriteVertexHead(out, plan, "VERTEX", entity, vertex.handle, *handles++, inPolyline);
        WriteVertex(out, data.flags, vertex);
        if (kept != nullptr) WriteKept(out, plan, "VERTEX", kept->own);
    }
    const auto* const end =
        WriteVertexHead(out, plan, "SEQEND", entity, data.seqendHandle, *handles, inPolyline);
    if (end != nullptr) WriteKept(out, plan, "SEQEND", end->own);
}

// The attributes of a block reference; `handles` begins with the reference's own.
void WriteParts(GroupWriter& out, const WritePlan& plan, const KeptGroups& kept, const HandleValue* handles) {
    const HandleValue reference = *handles++;
    for (const KeptRecord& part : kept.parts) {
        out.Word(0, part.name);
        out.Raw(WithOwner(plan.Fit(part.name, part.groups), reference, *handles++));
    }
}

void WriteUnread(GroupWriter& out, const WritePlan& plan, const KeptRecord& record, HandleValue owner) {
    out.Word(0, record.name);
    if (plan.IsRaised())
        out.Raw(WithOwner(plan.Fit(record.name, record.groups), owner));
    else
        WriteKept(out, plan, record.name, record.groups);
}

void RequireVertices(std::size_t count, const GroupWriter& out) {
    if (count == 0) throw InvalidCall(out.Place() + ": a polyline with vertices was expected");
}

// Writes one value under its code; the visitor's calls are the types that a code may have.
class XDataItemWriter {
  public:
    XDataItemWriter(GroupWriter& out, const WritePlan& plan, const XDataOfApp& app, int code)
        : mOut(out), mPlan(plan), mApp(app), mCode(code) {}

    void operator()(const std::string& text) const {
        Require(mCode >= 1000 && mCode <= 1005 && mCode != 1001 && mCode != 1004);
        if (TextUnits(text) > XDataTextLimit)
            throw InvalidCall(Where() + ": a text of at most 255 characters was expected");
        constexpr int codeHandle = 1005;
        const auto handle = mCode == codeHandle ? HandleFromText(text) : std::nullopt;
        mOut.Text(mCode, handle && mPlan.IsGone(*handle) ? std::string("0") : text);
    }
    void operator()(double value) const {
        Require(mCode >= 1040 && mCode <= 1042);
        mOut.ExactReal(mCode, value);
    }
    void operator()(std::int16_t value) const {
        Require(mCode == 1070);
        mOut.Whole(mCode, value);
    }
    void operator()(std::int32_t value) const {
        Require(mCode == 1071);
        mOut.Whole(mCode, value);
    }
    void operator()(const Point3& point) const {
        Require(mCode >= 1010 && mCode <= 1013);
        mOut.Point(mCode, point);
    }
    void operator()(const std::vector<std::uint8_t>& bytes) const {
        constexpr std::size_t longestChunk = 127;
        Require(mCode == 1004);
        const std::string all(bytes.begin(), bytes.end());
        std::size_t at = 0;
        do {
            mOut.Word(mCode, HexOf(std::string_view(all).substr(at, longestChunk)));
            at += longestChunk;
        } while (at < all.size());
    }

  private:
    std::string Where() const { return mOut.Place() + ", extended data of " + mApp.app; }
    void Require(bool fits) const {
        if (!fits)
            throw InvalidCall(Where() + ": a value that suits code " + std::to_string(mCode) +
                              " was expected");
    }

    GroupWriter& mOut;
    const WritePlan& mPlan;
    const XDataOfApp& mApp;
    int mCode;
};

}  // namespace

void WriteXData(GroupWriter& out, const WritePlan& plan, const std::vector<XDataOfApp>& xdata) {
    for (const XDataOfApp& app : xdata) {
        out.Text(1001, app.app);
        for (const XDataItem& item : app.items)
            std::visit(XDataItemWriter(out, plan, app, item.code), item.value);
    }
}

void WriteEntitiesOf(GroupWriter& out, const WritePlan& plan, const WritePlan::BlockPlan& block) {
    const Place place{block.record, block.isSpace && &block != &plan.Blocks()[0]};
    std::size_t at = 0, nextKept = 0;
    const std::vector<EntityData>& entities = block.block->entities;
    const auto writeKeptBefore = [&](std::size_t index) {
        for (; nextKept < block.kept.size() && block.kept[nextKept].first <= index; ++nextKept)
            WriteUnread(out, plan, *block.kept[nextKept].second, block.record);
    };
    for (std::size_t i = 0; i < entities.size(); ++i) {
        writeKeptBefore(i);
        const EntityData& entity = entities[i];
        const HandleValue handle = block.handles[at];
        const std::string_view name = EntityName(entity.geometry);
        out.SetPlace(std::string(name) + " " + HandleToText(handle));
        if (const auto* const polyline = std::get_if<PolylineData>(&entity.geometry)) {
            RequireVertices(polyline->vertices.size(), out);
            WritePolyline(out, plan, entity, *polyline, &block.handles[at], place);
            at += polyline->vertices.size() + 2;
            continue;
        }
        if (const auto* const polyline = std::get_if<LWPolylineData>(&entity.geometry))
            RequireVertices(polyline->vertices.size(), out);
        WriteCommon(out, plan, name, entity, handle, place.record, place.isPaper);
        WriteGeometry(out, plan, entity);
        WriteOwnAndFurther(out, plan, name, entity);
        WriteXData(out, plan, entity.xdata);
        if (entity.kept) WriteParts(out, plan, *entity.kept, &block.handles[at]);
        at += 1 + (entity.kept ? entity.kept->parts.size() : 0);
    }
    writeKeptBefore(entities.size());
}

}  // namespace brenvik
