// Texts of groups that are kept: walking them, and mending what they refer to.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "drafting_host/dxf/data/kept_records.h"

namespace brenvik {

/// Puts a group behind the text: the code right-aligned in three columns, the value in the next line.
void AppendGroup(std::string& text, int code, std::string_view value);

/// Goes through the groups of a text.
class GroupWalk {
  public:
    explicit GroupWalk(std::string_view text) : mRest(text) {}
    bool Next();
    int Code() const { return mCode; }
    std::string_view Value() const { return mValue; }
    /// Both lines of the group.
    std::string_view Text() const { return mText; }
    HandleValue Handle() const;

  private:
    std::string_view mRest, mValue, mText;
    int mCode = 0;
};

/// The true colour (group 420, red in the highest byte of three) among groups; null if there is none.
std::optional<std::uint32_t> TrueColorIn(std::string_view groups);
/// How much an entity hides of what stands behind it (group 440), from 0 to 255 for all; null if its
/// groups leave that to its layer or block.
std::optional<std::uint8_t> OpacityIn(std::string_view groups);
/// The same of a layer, which has it as extended data of an application of its own.
std::optional<std::uint8_t> OpacityOfLayerIn(std::string_view groups);
/// Whether the transparency among an entity's groups is that of the reference to its block.
bool IsOpacityByBlock(std::string_view groups);
/// Group 440 with this opacity.
std::string GroupOfOpacity(std::uint8_t opacity);
/// Groups with a true colour, as what an entity (`isLayer`: a layer) has besides its values.
Kept<KeptGroups> GroupsOfTrueColor(std::uint32_t color, bool isLayer = false);

/// A value as it stands in a file, without the blanks around it.
std::string_view WithoutBlanks(std::string_view text);

/// Whether the group refers to another record by its handle.
bool IsReference(int code);

using IsGoneTest = std::function<bool(HandleValue)>;

/// The groups of a record with every reference to what is gone mended: dropped from lists (brackets,
/// dictionaries, draw orders, groups, boundaries of hatches), zero elsewhere. `kind` is the record's name.
std::string MendedGroups(std::string_view kind, std::string_view groups, const IsGoneTest& isGone);

/// The groups with another owner and, unless it is 0, another own handle.
std::string WithOwner(std::string_view groups, HandleValue owner, HandleValue own = 0);

/// Calls with every handle that the groups refer to.
void ForEachReference(std::string_view groups, const std::function<void(HandleValue)>& visit);

}  // namespace brenvik
