// Layers: names compare without case, values are checked as the file format wants them.
#include "drafting_host/document/host_layers.h"

#include <algorithm>

#include "base/text.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/document/kept_groups.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik {

void HostLayer::RequireAlive() const {
    if (mPurged) throw host_failure::WasErased("layer \"" + mData.name + "\"");
    mDocument.RequireOpen();
}

std::string HostLayer::Name() const {
    RequireAlive();
    return mData.name;
}

int HostLayer::Color() const {
    RequireAlive();
    return mData.color;
}

void HostLayer::SetColor(int color) {
    RequireAlive();
    if (color < 1 || color > 255)
        throw host_failure::InvalidArgument("a layer's colour is a number from 1 to 255");
    mData.color = color;
    mData.kept = WithoutTrueColorOfLayer(mData.kept);
}

bool HostLayer::Freeze() const {
    RequireAlive();
    return mData.frozen;
}

void HostLayer::SetFreeze(bool freeze) {
    RequireAlive();
    if (freeze && &mDocument.CurrentLayer() == this)
        throw host_failure::NotPossible("the current layer can't be frozen");
    mData.frozen = freeze;
}

bool HostLayer::LayerOn() const {
    RequireAlive();
    return mData.on;
}

void HostLayer::SetLayerOn(bool on) {
    RequireAlive();
    mData.on = on;
}

bool HostLayer::Lock() const {
    RequireAlive();
    return mData.locked;
}

void HostLayer::SetLock(bool lock) {
    RequireAlive();
    mData.locked = lock;
}

void HostLayer::SetLinetype(std::string_view name) {
    RequireAlive();
    if (!mDocument.HasLinetype(name))
        throw host_failure::KeyNotFound("linetype \"" + std::string(name) + "\"");
    mData.linetype = name;
}

HandleValue HostLayer::OwnHandle() {
    RequireAlive();
    if (mData.handle == 0) mData.handle = mDocument.TakeHandle(0);
    return mData.handle;
}

int HostLayers::Count() const {
    mDocument.RequireOpen();
    return static_cast<int>(mOrder.size());
}

AcadLayer* HostLayers::Item(int index) {
    mDocument.RequireOpen();
    if (index < 0 || static_cast<std::size_t>(index) >= mOrder.size()) {
        throw host_failure::KeyNotFound("layer " + std::to_string(index) + " of " +
                                        std::to_string(mOrder.size()));
    }
    return mOrder[static_cast<std::size_t>(index)];
}

AcadLayer* HostLayers::Item(std::string_view name) {
    mDocument.RequireOpen();
    HostLayer* layer = Find(name);
    if (layer == nullptr) throw host_failure::KeyNotFound("layer \"" + std::string(name) + "\"");
    return layer;
}

AcadLayer* HostLayers::Add(std::string_view name) {
    mDocument.RequireOpen();
    if (HostLayer* layer = Find(name)) return layer;
    RequireTableName(name, "layer");
    LayerData data;
    data.name = name;
    return &Put(std::move(data));
}

HostLayer* HostLayers::Find(std::string_view name) const {
    const auto found = mByName.find(name);
    return found == mByName.end() ? nullptr : found->second;
}

HostLayer& HostLayers::Put(LayerData data) {
    if (HostLayer* layer = Find(data.name)) return *layer;
    const std::string name = data.name;
    mStore.push_back(std::make_unique<HostLayer>(mDocument, std::move(data)));
    HostLayer* layer = mStore.back().get();
    mOrder.push_back(layer);
    mByName.emplace(name, layer);
    return *layer;
}

void HostLayers::Clear() {
    mOrder.clear();
    mByName.clear();
}

void HostLayers::Purge(HostLayer& layer) {
    layer.MarkPurged();
    std::erase(mOrder, &layer);
    mByName.erase(layer.Values().name);
}

void RequireTableName(std::string_view name, std::string_view what) {
    constexpr std::size_t longest = 255;
    const std::string told = std::string(what) + " name \"" + std::string(name) + "\"";
    if (IsBlank(name)) throw host_failure::InvalidArgument(told + " is blank");
    if (CharacterCount(name) > longest)
        throw host_failure::InvalidArgument(told + " has more than 255 characters");
    const auto bad = std::find_if(name.begin(), name.end(), [&](char c) {
        return ForbiddenInNames.find(c) != std::string_view::npos || static_cast<unsigned char>(c) < 0x20;
    });
    if (bad != name.end()) {
        throw host_failure::InvalidArgument(told + " holds a character that names don't take (" +
                                            std::string(ForbiddenInNames) + ")");
    }
}

}  // namespace brenvik
