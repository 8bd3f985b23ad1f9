// Solids that a drawing shows through references to blocks: they are no entities of model space, so no
// selection meets them.
#pragma once

#include <string>
#include <vector>

namespace brenvik {

class HostDocument;

/// What the references of model space to one block show, references within it included.
struct BlockSolids {
    std::string block;
    long taken = 0;      ///< Made entities of model space.
    long left = 0;       ///< Left where they are.
    std::string reason;  ///< Why the first of these was left.
};

/// A record for each block that holds solids and that model space refers to, in the order of the first
/// references. Nothing is changed: all are left.
std::vector<BlockSolids> CountBlockSolids(const HostDocument& document);

/// Makes a solid of its own in model space of each, at its place, with the look and the extended data that
/// it has in its block. The references stay, so what the document holds then is no drawing to be saved. A
/// reference of uneven scale is left as it is, and so is one that shows more solids than a job has.
std::vector<BlockSolids> TakeOutBlockSolids(HostDocument& document);

}  // namespace brenvik
