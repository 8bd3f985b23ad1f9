// Annotation and pictures: a drawing loses them, a job doesn't.
#pragma once

#include <string_view>

namespace brenvik {

/// Whether entities of this kind, as DXF names it, hold no part of a job.
bool IsAnnotationKind(std::string_view kind);

}  // namespace brenvik
