// Solids that a drawing shows through references to blocks, or on its sheets: they are no entities of model
// space, so no selection meets them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace brenvik {

class HostDocument;
class HostEntity;

/// What one reference of model space shows, references within it included.
struct ReferenceSolids {
    HostEntity* reference = nullptr;
    std::string block;
    std::int64_t count = 0;
    std::vector<HostEntity*> taken;  ///< The entities of model space that they became; none where left.
    std::string reason;              ///< Why they were left.
};

/// The references of model space that show solids, in drawing order. Nothing is changed: all are left.
std::vector<ReferenceSolids> CountBlockSolids(const HostDocument& document);

/// Makes a solid of its own in model space of each, at its place, with the look that the reference shows it
/// with, and the extended data that it has in its block. The references stay, so what the document holds then
/// is no drawing to be saved. A reference of uneven scale is left as it is, and so is one with which the
/// drawing would show more solids than a job has, or whose blocks are nested deeper than any drawing's.
std::vector<ReferenceSolids> TakeOutBlockSolids(HostDocument& document);

/// Erases references that showed only the solids that were taken out of them, so that saving in a format
/// without blocks has no loss to report.
void EraseEmptied(HostDocument& document, const std::vector<ReferenceSolids>& references);

/// What stands on one sheet.
struct SheetSolids {
    std::string layout;  ///< The name on its tab.
    std::int64_t count = 0;
};

/// The sheets that hold solids or references that show some.
std::vector<SheetSolids> CountSheetSolids(const HostDocument& document);

}  // namespace brenvik
