// A whole drawing brought to another unit: what lies in model space, and all that is measured in it.
#pragma once

namespace brenvik {

class HostDocument;

/// Scales model space about its origin, with the views of it, its coordinate systems, the sizes of its text
/// and dimension styles, its lengths among the drawing's variables, and the saved extents of its solids.
/// Sheets stay in their own unit. So do records that are only passed on (dimensions, hatches); the caller
/// reports these.
void ScaleDrawing(HostDocument& document, double factor);

}  // namespace brenvik
