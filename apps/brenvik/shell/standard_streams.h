// The three streams that a shell hands over.
#pragma once

namespace brenvik::app {

/// Puts something that neither gives nor takes in the place of a stream that was handed over closed. The next
/// file that is opened would get its number otherwise, and messages would be written into a drawing.
void OpenStandardStreams();

}  // namespace brenvik::app
