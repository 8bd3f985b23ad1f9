#include "drafting_host/dxf/data/annotation_kinds.h"

#include <algorithm>
#include <array>

namespace brenvik {
namespace {

constexpr auto AnnotationKinds = std::to_array<std::string_view>(
    {"ACAD_TABLE",  "ARC_DIMENSION", "ATTDEF",      "ATTRIB",    "DGNUNDERLAY",
     "DIMENSION",   "DWFUNDERLAY",   "HATCH",       "IMAGE",     "LARGE_RADIAL_DIMENSION",
     "LEADER",      "LIGHT",         "MULTILEADER", "OLE2FRAME", "OLEFRAME",
     "PDFUNDERLAY", "RAY",           "SHAPE",       "SUN",       "TOLERANCE",
     "WIPEOUT",     "XLINE"});

}  // namespace

bool IsAnnotationKind(std::string_view kind) {
    return std::find(AnnotationKinds.begin(), AnnotationKinds.end(), kind) != AnnotationKinds.end();
}

}  // namespace brenvik
