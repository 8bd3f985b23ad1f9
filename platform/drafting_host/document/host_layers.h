// Layers of a drawing. An entity keeps a pointer to its layer, so comparing layers compares pointers; a
// purged layer stays in store for as long as the document is open.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/letter_case.h"
#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

class HostDocument;

class HostLayer final : public AcadLayer {
  public:
    HostLayer(HostDocument& document, LayerData data) : mDocument(document), mData(std::move(data)) {}
    std::string Name() const override;
    int Color() const override;
    /// 1 to 255.
    void SetColor(int color) override;
    bool Freeze() const override;
    /// Fails for freezing the current layer.
    void SetFreeze(bool freeze) override;
    bool LayerOn() const override;
    void SetLayerOn(bool on) override;
    bool Lock() const override;
    void SetLock(bool lock) override;

    const LayerData& Values() const { return mData; }
    void SetLinetype(std::string_view name);
    /// What other objects refer to the layer by; a layer new to the drawing gets its handle here.
    HandleValue OwnHandle();
    bool Locked() const { return mData.locked; }
    void MarkPurged() { mPurged = true; }

  private:
    void RequireAlive() const;

    HostDocument& mDocument;
    LayerData mData;
    bool mPurged = false;
};

class HostLayers final : public AcadLayers {
  public:
    explicit HostLayers(HostDocument& document) : mDocument(document) {}
    int Count() const override;
    AcadLayer* Item(int index) override;
    AcadLayer* Item(std::string_view name) override;
    AcadLayer* Add(std::string_view name) override;

    /// The layer of that name, or null.
    HostLayer* Find(std::string_view name) const;
    /// A layer as a file holds it; where the name is known, the known layer as it stands.
    HostLayer& Put(LayerData data);
    const std::vector<HostLayer*>& All() const { return mOrder; }
    /// Forgets all layers, for a drawing that holds nothing yet.
    void Clear();
    /// Removes the layer from the drawing; it must hold no entity.
    void Purge(HostLayer& layer);

  private:
    HostDocument& mDocument;
    std::vector<std::unique_ptr<HostLayer>> mStore;
    std::vector<HostLayer*> mOrder;
    std::map<std::string, HostLayer*, LessIgnoreCase> mByName;
};

/// Throws Failure for a name that a drawing's tables don't take: blank, more than 255 characters, or
/// with one of < > / \ " : ; ? * = | or the backquote. `what` names the kind of thing.
void RequireTableName(std::string_view name, std::string_view what);

}  // namespace brenvik
