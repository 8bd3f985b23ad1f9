// The drawing variables of release 2000 that a drawing keeps as they are, with the groups of their values.
// Not among them: what has a member of its own in DrawingData, what names things that a drawing doesn't
// hold here (dimension and multiline styles), and what is reckoned anew (extents).
#pragma once

#include <span>
#include <string_view>

namespace brenvik {

/// What a variable's value is made of; a point is groups 10, 20, 30, a flat one 10 and 20.
enum class VariableKind { Point, FlatPoint, Value };

struct HeaderVariable {
    std::string_view name;  ///< With its "$".
    VariableKind kind = VariableKind::Value;
    int code = 70;  ///< The first group.
};

/// In the order in which files hold them.
std::span<const HeaderVariable> DxfHeaderVariables();

/// The variable of that name, or null.
const HeaderVariable* FindHeaderVariable(std::string_view name);

}  // namespace brenvik
