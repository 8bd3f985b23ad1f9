// Drawings of other systems have no materials, and a run skips a part without one.
#include "drawings/given_material.h"

#include <optional>
#include <vector>

#include "base/failure.h"
#include "base/skip.h"
#include "base/text.h"
#include "parts/mautocad.h"

namespace brenvik::app {

namespace {

constexpr std::string_view MaterialKeyName = "MATERIAL";

bool HasMaterial(const HostEntity& entity) {
    std::vector<std::int16_t> types;
    std::vector<XDataValue> values;
    entity.GetXData(MaterialKeyName, types, values);
    if (values.size() < 2) return false;
    // A value that isn't text counts as a material, too.
    const auto* text = std::get_if<std::string>(&values[1]);
    return text == nullptr || !IsBlank(*text);
}

/// Opens a locked layer for as long as it lives: the lock keeps hands off the geometry, and no run heeds it.
class LayerOpened {
  public:
    explicit LayerOpened(HostLayer& entityLayer) : mLayer(entityLayer), mWasLocked(entityLayer.Locked()) {
        if (mWasLocked) mLayer.SetLock(false);
    }
    ~LayerOpened() {
        if (mWasLocked) mLayer.SetLock(true);
    }
    LayerOpened(const LayerOpened&) = delete;
    LayerOpened& operator=(const LayerOpened&) = delete;

  private:
    HostLayer& mLayer;
    bool mWasLocked;
};

}  // namespace

void GiveMaterial(HostDocument& document, const std::string& material, Teller& teller) {
    if (material.empty()) return;
    std::size_t given = 0;
    for (HostEntity* entity : document.PreviousSelection()) {
        if (HasMaterial(*entity)) continue;
        const std::optional<Failure> failure = Attempt([&] {
            const LayerOpened open(entity->LayerObject());
            mAutoCAD::SetPartData(entity, MaterialKeyName, material);
        });
        if (failure)
            teller.Loss("--material: " + entity->Handle() + " takes no material: " + failure->what());
        else
            ++given;
    }
    teller.Remark("--material: " + std::to_string(given) + (given == 1 ? " part" : " parts") +
                  " without a material given \"" + material + "\"");
}

}  // namespace brenvik::app
