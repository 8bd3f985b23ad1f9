// The parts of a drawing as a tree and a panel show them.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace brenvik {
class HostDocument;
class HostEntity;
}  // namespace brenvik

namespace brenvik::desktop {

struct PartLine {
    std::string handle, name, subAssembly, material, layer;
    bool visible = true;
};

/// The solids of model space in their order. One without a name is called by its handle.
std::vector<PartLine> PartLinesOf(HostDocument& document);

/// What a tree groups parts by.
enum class PartOrder { SubAssembly, Material, Layer };

/// The heading that the part stands under.
std::string HeadingOf(const PartLine& part, PartOrder order);

/// Whether one of the part's texts holds the words, in any case.
bool Matches(const PartLine& part, const std::string& words);

/// The properties of a part: captions and values, those without a value left out.
std::vector<std::pair<std::string, std::string>> PropertiesOf(HostEntity& entity);

}  // namespace brenvik::desktop
