// References that lead nowhere: each is replaced or left out, and reported by kind and handle.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "drafting_host/dxf/reading/reading.h"

namespace brenvik::dwg {

using NamesByHandle = std::unordered_map<HandleValue, std::string>;

/// Who refers to something; a variable has no handle.
struct Holder {
    std::string_view kind;
    HandleValue handle = 0;
};

/// As a note shows it: kind and handle.
std::string ShownHolder(const Holder& holder);
/// The first of several, and how many others there are.
std::string ShownHolders(std::string_view kind, const std::vector<HandleValue>& handles);

class Links {
  public:
    /// The name under a handle in a table of `what`; if there is none, `standard`, which is reported.
    std::string Named(const NamesByHandle& names, HandleValue target, std::string_view standard,
                      std::string_view what, const Holder& holder);
    /// The same of a reference that may be none: 0 is `standard` without a word.
    std::string NamedIfAny(const NamesByHandle& names, HandleValue target, std::string_view standard,
                           std::string_view what, const Holder& holder);
    /// A reference that is left out.
    void Drop(std::string_view what, HandleValue target, const Holder& holder);

    /// One note for each thing that isn't there.
    void Tell(Reading& reading) const;

  private:
    /// The missing entry, its handle, and the replacement.
    using Broken = std::tuple<std::string, HandleValue, std::string>;
    std::map<Broken, std::vector<std::string>> mBroken;
};

}  // namespace brenvik::dwg
