// Statements of a length or depth that the modeller can't take.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// Brackets may stand in each other this deep; real statements have them three deep.
constexpr long DeepestBrackets = 1000;

/// The place of the first statement with brackets in each other deeper than that: the modeller reads them by
/// recursion.
std::optional<std::size_t> TooDeep(const Statements& statements);

/// Whether the file has lists of meshes, layers or looks that are long. The modeller counts through a list
/// for each of its entries.
bool HasLongLists(const Statements& statements);

/// The text with the lists of meshes, which nobody reads, empty, and those of layers and looks cut into
/// statements of some thousand entries.
std::string WithoutLongLists(std::string content);

}  // namespace brenvik::step
