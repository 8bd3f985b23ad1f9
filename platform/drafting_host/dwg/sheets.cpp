#include "drafting_host/dwg/sheets.h"

#include <map>
#include <set>
#include <string>

#include "drafting_host/dwg/links.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik::dwg {
namespace {

std::string ShownSheet(const Layout& sheet) {
    return ShownHolder({"sheet " + ShownName(sheet.name), sheet.handle});
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

void JoinSheets(Names& names, Release release, Reading& reading) { SheetJoin(names, release, reading).Run(); }

}  // namespace brenvik::dwg
