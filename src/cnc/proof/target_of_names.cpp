// The names are tried with each target's reader.
#include "cnc/proof/target_of_names.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "base/skip.h"
#include "cnc/proof/operation_names.h"
#include "settings/materials.h"

namespace brenvik {

namespace {

/// Names that say less are read by those that say more too, with a longer feed: these stand first.
constexpr std::array InOrder{Target::C2C, Target::RCIM,  Target::ATP,  Target::Enroute,
                             Target::ABC, Target::THERM, Target::CNI,  Target::ASP,
                             Target::ROV, Target::WOP4,  Target::WOP5, Target::BW};

}  // namespace

Target TargetOfNames(std::span<const std::string> layers, bool metric, std::span<const std::string> tools,
                     const std::function<bool(Target)>& hasList) {
    return *std::ranges::max_element(InOrder, {}, [&](Target target) {
        const auto known = std::ranges::count_if(layers, [&](const std::string& layer) {
            return ReadOperationName({target, metric, tools, {}}, layer).has_value();
        });
        return std::pair(known, hasList(target));
    });
}

std::vector<std::string> AllToolNumbers() {
    std::set<std::string> tools;
    for (const MaterialTexts& texts : ReadMaterials().materials) {
        MaterialRecord material;
        Skip([&] { material = MaterialFromTexts(texts); });
        for (const MaterialTool& tool : material.tools)
            if (!tool.number.empty()) tools.insert(tool.number);
    }
    return {tools.begin(), tools.end()};
}

}  // namespace brenvik
