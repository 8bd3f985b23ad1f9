#include "drafting_host/dwg/sheets.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/record_checks.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik::dwg {
namespace {

std::string ShownSheet(const Layout& sheet) {
    return ShownHolder({"sheet " + ShownName(sheet.name), sheet.handle});
}

/// The place of its tab among those of all sheets, which is the second part's; null where it can't be read.
std::optional<long> TabOf(const Layout& sheet) {
    constexpr int codeOfTab = 71;
    GroupWalk walk(sheet.groups);
    while (walk.Next())
        if (walk.Code() == codeOfTab) return static_cast<long>(LenientNumber(walk.Value()));
    return {};
}

/// The dictionary has a sheet under its name. Release 14 changes the letters of one of the two.
void CheckKey(const Dictionary& dictionary, const Layout& sheet, Reading& reading) {
    const auto entry =
        std::ranges::find(dictionary.entries, sheet.handle, [](const auto& each) { return each.second; });
    if (entry == dictionary.entries.end() || EqualsIgnoreCase(entry->first, sheet.name)) return;
    reading.Note(0, ShownSheet(sheet) + " stands under " + ShownName(entry->first) +
                        " in the dictionary of all sheets: one of the two may be damaged");
}

/// What sheets say of themselves, against each other and against the dictionary that has all of them.
void CheckSheets(const Names& names, const Header& header, Release release, Reading& reading) {
    const auto all = header.handles.find("LAYOUTS");
    const bool isKnown = all != header.handles.end() && names.dictionaries.contains(all->second);
    const std::map<HandleValue, Layout> sheets(names.layouts.begin(), names.layouts.end());
    std::map<long, const Layout*> sheetOfTab;
    for (const auto& [handle, own] : sheets) {
        if (isKnown && own.dictionary != all->second)
            reading.Note(0, ShownSheet(own) +
                                " says that it belongs to another dictionary than that of all " +
                                "sheets: it may be damaged");
        if (isKnown && release >= Release::R2000) CheckKey(names.dictionaries.at(all->second), own, reading);
        if (const std::string doubt = ImpossibleIn("LAYOUT", own.groups); !doubt.empty())
            reading.Note(0, ShownSheet(own) + ": " + doubt);
        const auto tab = TabOf(own);
        if (!tab) continue;
        if (const auto [other, isFree] = sheetOfTab.emplace(*tab, &own); !isFree)
            reading.Note(0, ShownSheet(own) + " has the place " + std::to_string(*tab) +
                                " among the tabs, as " + ShownSheet(*other->second) +
                                " has: one of the two may be damaged");
    }
}

class SheetJoin {
  public:
    SheetJoin(Names& names, Release release, Reading& reading)
        : mNames(names),
          mReading(reading),
          mIsMutual(release >= Release::R2000),
          mSheets(names.layouts.begin(), names.layouts.end()) {
        for (const auto& [handle, sheet] : mSheets) mSheetOfBlock.emplace(sheet.block, &sheet);
    }

    void Run() {
        for (Block& block : mNames.blocks) {
            if (!IsSpace(block.name)) continue;
            const Layout* const sheet = SheetOf(block);
            if (sheet != nullptr && !mTaken.insert(sheet->handle).second)
                Tell(block, "refers to " + ShownSheet(*sheet) + ", which another block has");
            else if (sheet == nullptr && mIsMutual && !mSheets.empty())
                Tell(block, "has no sheet");
            else if (sheet != nullptr) {
                block.layout = sheet->handle;
                continue;
            }
            block.layout = 0;
        }
        for (const auto& [handle, sheet] : mSheets)
            if (!mTaken.contains(handle))
                mReading.Note(0, ShownSheet(sheet) + " is left out: no block is drawn on it");
    }

  private:
    void Tell(const Block& block, const std::string& what) {
        mReading.Note(0, ShownHolder({"block " + ShownName(block.name), block.record}) + " " + what +
                             ": it gets a new one");
    }

    /// That with which it agrees; of two others the one that refers to the block, as far as no block has it.
    const Layout* SheetOf(const Block& block) const {
        const auto named = mSheets.find(block.layout);
        const bool isNamed = named != mSheets.end();
        if (isNamed && named->second.block == block.record) return &named->second;
        const auto naming = mSheetOfBlock.find(block.record);
        const Layout* const sheet = naming != mSheetOfBlock.end() ? naming->second
                                    : isNamed                     ? &named->second
                                                                  : nullptr;
        if (sheet != nullptr && mIsMutual)
            mReading.Note(0, ShownSheet(*sheet) + " is taken as that of " +
                                 ShownHolder({"block " + ShownName(block.name), block.record}) + ", though " +
                                 (naming != mSheetOfBlock.end() ? "the block" : "the sheet") +
                                 " refers to another");
        return sheet;
    }

    Names& mNames;
    Reading& mReading;
    bool mIsMutual = true;
    std::map<HandleValue, Layout> mSheets;
    std::map<HandleValue, const Layout*> mSheetOfBlock;
    std::set<HandleValue> mTaken;
};

}  // namespace

void JoinSheets(Names& names, const Header& header, Release release, Reading& reading) {
    CheckSheets(names, header, release, reading);
    SheetJoin(names, release, reading).Run();
}

}  // namespace brenvik::dwg
