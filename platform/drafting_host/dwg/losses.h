// What of a binary drawing is left out, counted while it is read and reported at the end.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drafting_host/dwg/entities.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik::dwg {

/// A kind, or the number of one without a name.
std::string KindOrType(std::string_view kind, unsigned type);

/// Whether a record's extended data are kept.
bool KeepsData(std::string_view kind);

/// What of a drawing's texts can't be as it stands.
void TellTexts(const Texts& texts, Reading& reading);

class Losses {
  public:
    /// An entity of a kind that drawings don't hold.
    void PassOver(std::string_view kind, unsigned type);
    /// An object that is no entity.
    void Leave(HandleValue handle, std::string kind) { mLeft.emplace_back(handle, std::move(kind)); }
    /// An object of a class that the file doesn't name.
    void LeaveUnknown() { ++mUnknown; }
    /// Extended data of a record that nothing keeps.
    void LeaveData(std::string_view kind) { ++mData[std::string(kind)]; }
    /// What an entity that was taken loses.
    void Take(const Further& further, Reading& reading);

    /// `taken` are the handles of entities.
    void Tell(Reading& reading, const std::set<HandleValue>& taken) const;

  private:
    void TellPassedOver(Reading& reading) const;
    void TellSplines(Reading& reading) const;

    std::map<std::string, std::size_t> mPassed, mData;
    std::map<std::string, std::size_t> mSplines;  ///< By what their file leaves open.
    std::size_t mTextsInColumns = 0, mUnknown = 0;
    std::vector<std::pair<HandleValue, std::string>> mLeft;
};

}  // namespace brenvik::dwg
