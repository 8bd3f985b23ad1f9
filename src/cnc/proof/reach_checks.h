// How far operations of a file go beyond the part, where nothing of it shows whether they are right.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cnc/proof/written_side.h"

namespace brenvik {

struct RunState;

/// In words, what no run would have written: paths that run on in the air further than the material's widest
/// bit asks for, cuts that go deeper into the spoil board than the settings say and than a spoil board is
/// thick, edge bores that don't begin on the part's edge. `part` is its box as the operations have it.
std::vector<std::string> FaultsOfReach(const RunState& run, const Box3& part,
                                       std::span<const WrittenOperation> operations);

}  // namespace brenvik
