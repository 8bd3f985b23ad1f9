// Characters that a layer's name can't have become underscores, so several names can come to the same one.
#include "drafting_host/document/files/imported_layers.h"

#include <set>

#include "base/letter_case.h"
#include "base/text.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik {
namespace {

constexpr std::size_t LongestName = 255;

std::string AllowedName(std::string_view name) {
    std::string result = Trim(Left(name, LongestName));
    for (char& c : result) {
        if (ForbiddenInNames.find(c) != std::string_view::npos || static_cast<unsigned char>(c) < 0x20)
            c = '_';
    }
    return result.empty() ? "0" : result;
}

}  // namespace

ImportedLayers::ImportedLayers(const std::vector<std::string>& names) {
    std::set<std::string> taken;  // without regard to case, as the drawing compares them
    mNames[""] = "0";
    taken.insert("0");
    std::vector<std::string> open;
    for (const std::string& name : names) {
        if (mNames.contains(name)) continue;
        const std::string allowed = AllowedName(name);
        mNames[name] = allowed;
        const bool isOwn = name == allowed && (name == "0" || taken.insert(FoldUpper(name)).second);
        if (!isOwn) open.push_back(name);
    }
    for (const std::string& name : open) {
        const std::string allowed = mNames[name];
        std::string given = allowed;
        for (int number = 2; allowed != "0" && !taken.insert(FoldUpper(given)).second; ++number) {
            const std::string tail = "_" + std::to_string(number);
            given = std::string(Left(allowed, LongestName - tail.size())) + tail;
        }
        if (given != allowed)
            mRemarks.push_back("layer \"" + name + "\" is called \"" + given +
                               "\", since the drawing has another layer \"" + allowed + "\"");
        mNames[name] = given;
    }
}

}  // namespace brenvik
