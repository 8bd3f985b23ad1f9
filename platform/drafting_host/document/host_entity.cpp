// The operations that all entities share, and the rules of life and locks that guard them.
#include "drafting_host/document/host_entity.h"

#include <algorithm>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "drafting_host/document/extended_data.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/document/intersections.h"
#include "drafting_host/document/kept_groups.h"

namespace brenvik {

using namespace vectors;

HostEntity::HostEntity(HostBlock& owner, HandleValue handle) : mOwner(&owner), mHandle(handle) {}

HostDocument& HostEntity::Document() const { return mOwner->Document(); }

void HostEntity::RequireAlive() const {
    if (mErased) throw host_failure::WasErased("handle " + HandleToText(mHandle));
}

void HostEntity::RequireChangeable() const {
    RequireAlive();
    if (mLook.layer->Locked()) throw host_failure::OnLockedLayer(mLook.layer->Values().name);
}

std::string HostEntity::Handle() const {
    RequireAlive();
    return HandleToText(mHandle);
}

std::int32_t HostEntity::ObjectID() const {
    RequireAlive();
    return Document().Host().ObjectIdOf(*this);
}

void HostEntity::GetXData(std::string_view appName, std::vector<std::int16_t>& types,
                          std::vector<XDataValue>& values) const {
    RequireAlive();
    ListXData(mXData, appName, types, values);
}

void HostEntity::SetXData(std::span<const std::int16_t> types, std::span<const XDataValue> values) {
    RequireChangeable();
    const std::vector<XDataOfApp> changes = ParseXData(types, values);
    MergeXData(mXData, changes);
    for (XDataOfApp& app : mXData) {
        const bool set = std::ranges::any_of(
            changes, [&](const XDataOfApp& change) { return EqualsIgnoreCase(change.app, app.app); });
        if (set) app.app = Document().RegisterApplication(app.app);
    }
}

void HostEntity::Delete() {
    RequireChangeable();
    EraseAnyway();
}

void HostEntity::EraseAnyway() {
    if (mErased) return;
    mErased = true;
    mXData.clear();
    mKept = {};
    Release();
    mOwner->NoteErased();
    Document().NoteErased(*this);
}

std::string HostEntity::Layer() const {
    RequireAlive();
    return mLook.layer->Values().name;
}

void HostEntity::SetLayer(std::string_view name) {
    RequireChangeable();
    HostLayer* layer = Document().LayerTable().Find(name);
    if (layer == nullptr) throw host_failure::KeyNotFound("layer \"" + std::string(name) + "\"");
    mLook.layer = layer;
}

std::string HostEntity::Linetype() const {
    RequireAlive();
    return mLook.linetype;
}

void HostEntity::SetLinetype(std::string_view name) {
    RequireChangeable();
    if (!Document().HasLinetype(name))
        throw host_failure::KeyNotFound("linetype \"" + std::string(name) + "\"");
    mLook.linetype = name;
}

double HostEntity::LinetypeScale() const {
    RequireAlive();
    return mLook.linetypeScale;
}

void HostEntity::SetLinetypeScale(double scale) {
    RequireChangeable();
    if (!(scale > 0) || !std::isfinite(scale))
        throw host_failure::InvalidArgument("a linetype scale has to be above 0");
    mLook.linetypeScale = scale;
}

bool HostEntity::Visible() const {
    RequireAlive();
    return mLook.visible;
}

void HostEntity::SetVisible(bool visible) {
    RequireChangeable();
    mLook.visible = visible;
}

int HostEntity::Color() const {
    RequireAlive();
    return mLook.color;
}

void HostEntity::SetColor(int color) {
    RequireChangeable();
    if (color < 0 || color > 256) throw host_failure::InvalidArgument("a colour is a number from 0 to 256");
    mLook.color = color;
    mKept = WithoutTrueColor(mKept);
}

/// No view shows it.
void HostEntity::Highlight(bool) { RequireAlive(); }

void HostEntity::Update() { RequireAlive(); }

HostEntity& HostEntity::CopyInto(HostBlock& block) const {
    RequireAlive();
    HostEntity& copy = block.Add(Geometry());
    EntityLook look = mLook;
    if (&block.Document() != &Document())
        look.layer = &block.Document().LayerTable().Put(look.layer->Values());
    copy.mLook = std::move(look);
    copy.mXData = mXData;
    copy.mKept = &block.Document() == &Document() ? OfCopy(mKept) : OfOtherDrawing(mKept);
    for (XDataOfApp& app : copy.mXData) app.app = block.Document().RegisterApplication(app.app);
    return copy;
}

AcadEntity* HostEntity::Copy() { return &CopyInto(*mOwner); }

void HostEntity::Transform(const Similarity& move) {
    RequireChangeable();
    if (move.Identity()) return;
    ApplyTransform(move);
    mKept = AfterMove(mKept, ObjectName(), move);
}

void HostEntity::Move(const Point3& from, const Point3& to) {
    RequireChangeable();
    Transform(Similarity::Shift(to - from));
}

void HostEntity::Rotate(const Point3& base, double angle) {
    RequireChangeable();
    Transform(Similarity::Turn(base, base + Point3{0, 0, 1}, angle));
}

void HostEntity::Rotate3D(const Point3& axisFrom, const Point3& axisTo, double angle) {
    RequireChangeable();
    Transform(Similarity::Turn(axisFrom, axisTo, angle));
}

HostEntity& HostEntity::MirroredCopy(const Similarity& mirror) {
    HostGeometry geometry = Geometry();
    brenvik::Transform(geometry, mirror);
    HostEntity& copy = mOwner->Add(std::move(geometry));
    copy.TakeAllButGeometry(*this);
    copy.mKept = AfterMove(copy.mKept, ObjectName(), mirror);
    return copy;
}

void HostEntity::TakeAllButGeometry(const HostEntity& original) {
    mLook = original.mLook;
    mXData = original.mXData;
    mKept = OfCopy(original.mKept);
}

AcadEntity* HostEntity::Mirror(const Point3& first, const Point3& second) {
    RequireAlive();
    const Point3 along = second - first;
    return &MirroredCopy(Similarity::Mirror(first, {along.y, -along.x, 0}));
}

AcadEntity* HostEntity::Mirror3D(const Point3& first, const Point3& second, const Point3& third) {
    RequireAlive();
    return &MirroredCopy(Similarity::Mirror(first, Cross(second - first, third - first)));
}

void HostEntity::ScaleEntity(const Point3& base, double factor) {
    RequireChangeable();
    Transform(Similarity::Scale(base, factor));
}

void HostEntity::TransformBy(const Matrix4& matrix) {
    RequireChangeable();
    Transform(Similarity::FromMatrix(matrix));
}

Box3 HostEntity::GetBoundingBox() const {
    RequireAlive();
    const std::optional<Box3> box = Box();
    if (!box) throw host_failure::NotPossible(std::string(ObjectName()) + " without an extent has no box");
    return *box;
}

std::vector<Point3> HostEntity::IntersectWith(const AcadEntity& other, ExtendOption option) const {
    const HostEntity& partner = HostEntityOf(other);
    RequireAlive();
    partner.RequireAlive();
    return Intersections(*this, partner, option);
}

HostEntity& HostEntityOf(AcadEntity* entity) {
    auto* host = dynamic_cast<HostEntity*>(entity);
    if (host == nullptr) throw ObjectNotSet("an entity of the drafting host is expected");
    return *host;
}

const HostEntity& HostEntityOf(const AcadEntity& entity) {
    const auto* host = dynamic_cast<const HostEntity*>(&entity);
    if (host == nullptr) throw ObjectNotSet("an entity of the drafting host is expected");
    return *host;
}

}  // namespace brenvik
