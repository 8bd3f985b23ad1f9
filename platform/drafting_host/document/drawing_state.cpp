// Texts by their hash, geometry by its values, shapes by whether they are the same ones.
#include "drafting_host/document/drawing_state.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

#include "drafting_host/document/host_document.h"

namespace brenvik {

namespace {

void Mix(std::size_t& sum, std::size_t value) { sum = (sum ^ value) * std::size_t{0x100000001B3}; }

template <class Value>
void MixValue(std::size_t& sum, const Value& value) {
    Mix(sum, std::hash<Value>()(value));
}

void MixItem(std::size_t& sum, const XDataItem& item) {
    MixValue(sum, item.code);
    std::visit(
        [&sum]<class Value>(const Value& value) {
            if constexpr (std::is_same_v<Value, Point3>) {
                for (const double coordinate : {value.x, value.y, value.z}) MixValue(sum, coordinate);
            } else if constexpr (std::is_same_v<Value, std::vector<std::uint8_t>>) {
                for (const std::uint8_t byte : value) MixValue(sum, byte);
            } else {
                MixValue(sum, value);
            }
        },
        item.value);
}

std::size_t DataOf(const XDataOfApp& data) {
    std::size_t sum = 0;
    MixValue(sum, data.app);
    for (const XDataItem& item : data.items) MixItem(sum, item);
    return sum;
}

std::size_t TextsOf(const HostEntity& entity) {
    std::size_t sum = 0;
    const EntityLook& look = entity.Look();
    MixValue(sum, entity.Layer());
    MixValue(sum, look.linetype);
    MixValue(sum, look.linetypeScale);
    MixValue(sum, look.color);
    MixValue(sum, look.visible);
    // Data that are cleared and set anew stand behind the others: added up, their order makes no difference.
    std::size_t data = 0;
    for (const XDataOfApp& one : entity.ExtendedData()) data += DataOf(one);
    Mix(sum, data);
    return sum;
}

}  // namespace

bool IsSameGeometry(const HostGeometry& a, const HostGeometry& b) {
    if (a.index() != b.index()) return false;
    return std::visit(
        [&b]<class Data>(const Data& data) {
            const Data& other = std::get<Data>(b);
            if constexpr (std::is_same_v<Data, ShapeData>)
                return data.kind == other.kind && data.shape.IsSame(other.shape);
            else
                return data == other;
        },
        a);
}

DrawingState::DrawingState(const HostDocument& document) {
    for (const auto& block : document.AllBlocks())
        for (const HostEntity* entity : block->Entities())
            if (!entity->Erased())
                mEntities.push_back({entity->HandleNumber(), TextsOf(*entity), entity->Geometry()});
    std::ranges::sort(mEntities, {}, &Entity::handle);
}

bool operator==(const DrawingState& a, const DrawingState& b) {
    return std::ranges::equal(a.mEntities, b.mEntities,
                              [](const DrawingState::Entity& one, const DrawingState::Entity& other) {
                                  return one.handle == other.handle && one.texts == other.texts &&
                                         IsSameGeometry(one.geometry, other.geometry);
                              });
}

}  // namespace brenvik
