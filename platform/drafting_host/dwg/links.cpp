// A missing entry of a table may be named by thousands of entities: the first few of them are shown.
#include "drafting_host/dwg/links.h"

#include <algorithm>

#include "base/handle_text.h"

namespace brenvik::dwg {

std::string ShownHolder(const Holder& holder) {
    std::string shown(holder.kind.empty() ? "object" : holder.kind);
    if (holder.handle != 0) shown += " (handle " + HandleToText(holder.handle) + ")";
    return shown;
}

namespace {

std::string FirstOf(const std::vector<std::string>& shown) {
    constexpr std::size_t most = 5;
    std::string all;
    for (std::size_t i = 0; i < std::min(shown.size(), most); ++i) all += (i == 0 ? "" : ", ") + shown[i];
    if (shown.size() == most + 1)
        all += " and 1 other";
    else if (shown.size() > most)
        all += " and " + std::to_string(shown.size() - most) + " others";
    return all;
}

}  // namespace

std::string ShownHolders(std::string_view kind, const std::vector<HandleValue>& handles) {
    std::vector<std::string> shown;
    for (const HandleValue handle : handles) shown.push_back(ShownHolder({kind, handle}));
    return FirstOf(shown);
}

std::string Links::Named(const NamesByHandle& names, HandleValue target, std::string_view standard,
                         std::string_view what, const Holder& holder) {
    const auto found = names.find(target);
    if (found != names.end() && !found->second.empty()) return found->second;
    // A blank name has been reported where the entry was read.
    if (found == names.end())
        mBroken[{std::string(what), target, ShownName(standard) + " is taken"}].push_back(
            ShownHolder(holder));
    return std::string(standard);
}

std::string Links::NamedIfAny(const NamesByHandle& names, HandleValue target, std::string_view standard,
                              std::string_view what, const Holder& holder) {
    return target == 0 ? std::string(standard) : Named(names, target, standard, what, holder);
}

void Links::Drop(std::string_view what, HandleValue target, const Holder& holder) {
    mBroken[{std::string(what), target, "the reference is left out"}].push_back(ShownHolder(holder));
}

void Links::Tell(Reading& reading) const {
    for (const auto& [broken, holders] : mBroken) {
        const auto& [what, target, outcome] = broken;
        const std::string expected =
            target == 0 ? what + " without a handle" : what + " (handle " + HandleToText(target) + ")";
        reading.Note(0, FirstOf(holders) + (holders.size() == 1 ? " refers to " : " refer to ") + expected +
                            ", which the drawing doesn't have: " + outcome);
    }
}

}  // namespace brenvik::dwg
