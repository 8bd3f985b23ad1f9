// Names of C2C read back: VD_Z12_T_D8, RT_Z9_T1_D12_S18000_F300_R_C0_1, HF_T, PL_18.
#include "cnc/checked_names.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "base/numbers.h"

namespace brenvik {

namespace {

constexpr double NameSlack = 6e-6;  // Depths of paths have five decimals in names.

std::optional<double> Field(std::string_view name, std::string_view mark) {
    const std::size_t at = name.find(mark);
    if (at == std::string_view::npos) return std::nullopt;
    const std::size_t from = at + mark.size();
    std::string text(name.substr(from, name.find('_', from) - from));
    std::ranges::replace(text, 'p', '.');
    return LenientNumber(text);
}

void Compare(std::optional<double> told, double is, std::string_view what, std::vector<std::string>& faults) {
    if (!told)
        faults.push_back(": no " + std::string(what) + " in the name");
    else if (std::abs(*told - is) > NameSlack)
        faults.push_back(": the " + std::string(what) + " is " + NumberToText(is));
}

}  // namespace

std::vector<std::string> NameFaults(Target target, const Drawn& drawn) {
    if (target != Target::C2C) return {};
    constexpr auto known = std::to_array<std::string_view>(
        {"OT_Z", "RT_Z", "PKC_Z", "PKS_Z", "VD_Z", "PL_", "HF_T", "HB_T", "HL_T", "HR_T"});
    const std::string& name = drawn.layer;
    if (std::ranges::none_of(known, [&](std::string_view prefix) { return name.starts_with(prefix); }))
        return {": no layer of an operation"};
    std::vector<std::string> faults;
    if (name.starts_with("PL_"))
        Compare(Field(name, "PL_"), drawn.thickness, "thickness", faults);
    else if (name[0] != 'H')
        Compare(Field(name, "_Z"), -drawn.thickness, "depth", faults);
    else if (drawn.thickness >= 0)
        faults.push_back(": no depth");
    if (name.starts_with("VD_")) Compare(Field(name, "_T_D"), drawn.diameter, "diameter", faults);
    return faults;
}

}  // namespace brenvik
