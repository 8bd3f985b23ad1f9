// What all entities of the drafting host share: handle, layer, look, extended data, life. An erased
// entity stays in its document's store as a tombstone, so that a pointer kept by somebody answers with a
// Failure instead of reading freed memory.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

class HostBlock;
class HostDocument;
class HostLayer;

/// What an entity has besides its geometry.
struct EntityLook {
    HostLayer* layer = nullptr;
    std::string linetype = "ByLayer";
    double linetypeScale = 1;
    int color = 256;
    bool visible = true;
    int lineweight = -1;  ///< Hundredths of a millimetre; -1 by layer.
};

class HostEntity : public virtual AcadEntity {
  public:
    HostEntity(HostBlock& owner, HandleValue handle);
    HostEntity(const HostEntity&) = delete;
    HostEntity& operator=(const HostEntity&) = delete;

    std::string Handle() const override;
    std::int32_t ObjectID() const override;
    void GetXData(std::string_view appName, std::vector<std::int16_t>& types,
                  std::vector<XDataValue>& values) const override;
    void SetXData(std::span<const std::int16_t> types, std::span<const XDataValue> values) override;
    void Delete() override;

    std::string Layer() const override;
    void SetLayer(std::string_view name) override;
    std::string Linetype() const override;
    void SetLinetype(std::string_view name) override;
    double LinetypeScale() const override;
    void SetLinetypeScale(double scale) override;
    bool Visible() const override;
    void SetVisible(bool visible) override;
    int Color() const override;
    void SetColor(int color) override;
    void Highlight(bool on) override;
    void Update() override;
    AcadEntity* Copy() override;
    void Move(const Point3& from, const Point3& to) override;
    void Rotate(const Point3& base, double angle) override;
    void Rotate3D(const Point3& axisFrom, const Point3& axisTo, double angle) override;
    AcadEntity* Mirror(const Point3& first, const Point3& second) override;
    AcadEntity* Mirror3D(const Point3& first, const Point3& second, const Point3& third) override;
    void ScaleEntity(const Point3& base, double factor) override;
    void TransformBy(const Matrix4& matrix) override;
    Box3 GetBoundingBox() const override;
    std::vector<Point3> IntersectWith(const AcadEntity& other, ExtendOption option) const override;

    // Beyond the object model, for the host's own commands.

    bool Erased() const { return mErased; }
    HandleValue HandleNumber() const { return mHandle; }
    /// Comparing these pointers compares layers without building a text.
    HostLayer& LayerObject() const { return *mLook.layer; }
    HostBlock& Owner() const { return *mOwner; }
    HostDocument& Document() const;
    const EntityLook& Look() const { return mLook; }
    /// Takes over layer, colour, linetype and visibility as they are, whatever is locked.
    void SetLook(EntityLook look) { mLook = std::move(look); }
    const std::vector<XDataOfApp>& ExtendedData() const { return mXData; }
    /// Takes over extended data that have been checked already.
    void SetExtendedData(std::vector<XDataOfApp> data) { mXData = std::move(data); }
    /// What the file that was read holds of the entity besides its values.
    const Kept<KeptGroups>& KeptGroupsOfFile() const { return mKept; }
    void SetKeptGroups(Kept<KeptGroups> kept) { mKept = std::move(kept); }
    /// Takes over look, extended data and what is kept from an entity that this one is a copy of.
    void TakeAllButGeometry(const HostEntity& original);
    /// The entity's values; a shape is shared, not copied.
    virtual HostGeometry Geometry() const = 0;
    /// Any move of the host. Fails on a locked layer.
    void Transform(const Similarity& move);
    /// A copy in any block of any document of this host, look by layer name, extended data included.
    HostEntity& CopyInto(HostBlock& block) const;
    /// Throws Failure once the entity is erased.
    void RequireAlive() const;
    /// Throws Failure once the entity is erased, or while its layer is locked.
    void RequireChangeable() const;
    /// Erases whatever is locked, for operations that use an entity up.
    void EraseAnyway();

  protected:
    virtual void ApplyTransform(const Similarity& move) = 0;
    /// Null if the entity has no extent at all.
    virtual std::optional<Box3> Box() const = 0;
    /// Frees large data once the entity is erased.
    virtual void Release() {}

  private:
    HostEntity& MirroredCopy(const Similarity& mirror);

    HostBlock* mOwner;
    HandleValue mHandle;
    EntityLook mLook;
    std::vector<XDataOfApp> mXData;
    Kept<KeptGroups> mKept;
    bool mErased = false;
};

/// The host's own entity behind a pointer of the object model. Throws Failure for none.
HostEntity& HostEntityOf(AcadEntity* entity);
const HostEntity& HostEntityOf(const AcadEntity& entity);

/// An entity whose values are plain data.
template <class Data>
class HostDataEntity : public HostEntity {
  public:
    HostDataEntity(HostBlock& owner, HandleValue handle, Data data)
        : HostEntity(owner, handle), mData(std::move(data)) {}
    HostGeometry Geometry() const override { return mData; }
    const Data& Values() const { return mData; }

  protected:
    void ApplyTransform(const Similarity& move) override { brenvik::Transform(mData, move); }
    std::optional<Box3> Box() const override { return BoxOf(mData); }

    Data mData;
};

}  // namespace brenvik
