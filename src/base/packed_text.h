// Texts of any content, one behind the other in one text: what a program hands to another copy of itself.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// Adds a text with its length ahead of it: "5:Shelf".
void PackText(std::string& packed, std::string_view text);
/// The same for several, with their count ahead of them.
void PackTexts(std::string& packed, const std::vector<std::string>& texts);

/// Takes the texts off again, in their order. Fails with 13 where none was packed.
class PackedTexts {
  public:
    explicit PackedTexts(std::string_view packed) : mRest(packed) {}

    std::string Take();
    std::vector<std::string> TakeAll();  ///< What PackTexts has packed.
    std::size_t TakeCount();             ///< A whole number, packed as a text.
    bool AtEnd() const { return mRest.empty(); }

  private:
    std::string_view mRest;
};

}  // namespace brenvik
