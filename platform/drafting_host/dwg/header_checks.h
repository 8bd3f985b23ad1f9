// What a drawing's variables can't be: values out of their ranges, and references to objects of another kind.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "drafting_host/dwg/header.h"
#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/object_map.h"
#include "drafting_host/dwg/streams.h"

namespace brenvik::dwg {

inline constexpr double MillisecondsOfDay = 86400000;

/// The variables that are values, by name.
struct Values {
    std::map<std::string, int> whole;
    std::map<std::string, std::vector<double>> reals;
    std::map<std::string, std::string> texts;
};

/// Takes out the values that a variable can't have, and gives a text for each. A 0 may stand for one that its
/// writer didn't know.
std::vector<std::string> DropImpossible(Values& values);

/// Reports a next handle that objects have already. They are told apart by the handles of their own, so that
/// nothing is lost but the variable.
void CheckHandleSeed(HandleValue seed, const ObjectMap& map, Reading& reading);

/// Reports references that are none where one is needed, or that lead to nothing or to an object of another
/// kind. Those to entries of tables are looked up by name elsewhere.
void CheckHandles(const Header& header, const Sections& sections, const Texts& texts, const ObjectMap& map,
                  const Kinds& kinds, Links& links);

}  // namespace brenvik::dwg
