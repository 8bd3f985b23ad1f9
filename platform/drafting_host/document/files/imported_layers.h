// Layers of other systems under the names that a drawing takes: two of them stay two.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace brenvik {

class ImportedLayers {
  public:
    /// By the names that the solids of a file stand under, each as often as it occurs; blank for none. A name
    /// that a drawing takes as it is has it before others that would come to be called so.
    explicit ImportedLayers(const std::vector<std::string>& names);

    /// The drawing's name for a layer, "0" for none.
    const std::string& NameOf(const std::string& name) const { return mNames.at(name); }

    /// What is to be remarked: layers that bear a number, since another one has their name.
    const std::vector<std::string>& Remarks() const { return mRemarks; }

  private:
    std::map<std::string, std::string> mNames;  ///< By the file's names.
    std::vector<std::string> mRemarks;
};

}  // namespace brenvik
