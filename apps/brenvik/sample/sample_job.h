// The sample job: a kitchen base cabinet, metric, as a designer would have modelled it, with part data on
// most of its parts and some left for the user to fill.
#pragma once

namespace brenvik {
class AcadDocument;
}

namespace brenvik::app {

/// Draws the cabinet into the document's model space: 600 wide, 720 high, 560 deep (millimetres), the
/// front at Y 0 and the floor at Z 0. Throws Failure when the host refuses.
void DrawSampleJob(AcadDocument& document);

}  // namespace brenvik::app
