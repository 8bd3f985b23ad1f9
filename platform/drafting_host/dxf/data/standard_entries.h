// What every drawing has, whether its maker said so or not, and the look-up of table entries by name.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/letter_case.h"
#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

inline constexpr std::string_view ModelSpaceName = "*Model_Space";
inline constexpr std::string_view PaperSpaceName = "*Paper_Space";

/// Handles above this are damage: nothing would be left above them.
inline constexpr HandleValue HighestHandle = 0x7FFF'FFFF'FFFF'FFFF;

/// Whether the block is model space, paper space or a further layout's space.
bool IsSpace(std::string_view blockName);

/// The characters that release 2000 refuses in names.
inline constexpr std::string_view ForbiddenInNames = "<>/\\\":;?*=|`";
/// Whether a layer may have the name: 1 to 255 characters, none of them forbidden or a control character.
bool IsAllowedLayerName(std::string_view name);

/// Adds what is missing of: layer "0", the linetypes "ByBlock", "ByLayer" and "Continuous", the text style
/// "Standard", the application "ACAD", the variable $TILEMODE.
void AddStandardEntries(DrawingData& data);

/// The entries of a table by name, without regard to case. Keep the vector alive and change it only
/// through this class meanwhile.
template <typename Entry>
class NameTable {
  public:
    explicit NameTable(std::vector<Entry>& entries) : mEntries(entries) {
        for (std::size_t i = 0; i < entries.size(); ++i) mPlaces.emplace(FoldUpper(entries[i].name), i);
    }

    /// The entry of that name; one with default values is added when there is none. Good until the next call.
    const Entry& Named(const std::string& name) {
        if (mLast < mEntries.size() && mEntries[mLast].name == name) return mEntries[mLast];
        const auto [place, isNew] = mPlaces.emplace(FoldUpper(name), mEntries.size());
        if (isNew) mEntries.emplace_back().name = name;
        mLast = place->second;
        return mEntries[mLast];
    }

    bool Has(const std::string& name) const { return mPlaces.contains(FoldUpper(name)); }

  private:
    std::vector<Entry>& mEntries;
    std::unordered_map<std::string, std::size_t> mPlaces;
    std::size_t mLast = static_cast<std::size_t>(-1);
};

/// The style that an entity's geometry names, or nothing.
template <typename Geometry>
auto* StyleOf(Geometry& geometry) {
    using Text = std::conditional_t<std::is_const_v<Geometry>, const std::string, std::string>;
    if (auto* const text = std::get_if<TextData>(&geometry)) return static_cast<Text*>(&text->style);
    if (auto* const text = std::get_if<MTextData>(&geometry)) return static_cast<Text*>(&text->style);
    return static_cast<Text*>(nullptr);
}

}  // namespace brenvik
