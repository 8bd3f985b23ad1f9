// Uses of shapes and products that differ from others of the same one: by a layer or style of their own, or
// by being mirrored. The modeller has one shape for all uses, and no mirrored ones.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// A solid that belongs to such a use alone.
struct OwnSolid {
    int number = 0;          ///< Its statement.
    int original = 0;        ///< The statement that it is a copy of, or itself.
    std::vector<int> chain;  ///< What its looks can stand on, from the original outwards.
    /// Comes to its place mirrored across the YZ plane of the shape that it stands in.
    bool isMirrored = false;
    /// The product whose shape is mapped there, by its definition; 0 where a product is used, or none has it.
    int owner = 0;
};

struct OwnUses {
    std::string content;
    std::vector<OwnSolid> solids;
    std::size_t emptiedProducts = 0;  ///< Those that have lost their shape, since copies are used instead.
};

/// Whether there may be such uses: a mapped shape, a layer or style of a usage or a whole shape, a place that
/// mirrors.
bool HasOwnUses(const Statements& statements);

/// The content in which each of these uses has copies of what it uses, in which nothing mirrors any more.
/// Solids whose shape has a look are among the result as they are.
OwnUses WithOwnUses(std::string content);

}  // namespace brenvik::step
