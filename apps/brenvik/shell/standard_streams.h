// The three streams that a shell hands over.
#pragma once

namespace brenvik::app {

/// Opens the null device in place of a closed stream. The next file that is opened would get its number
/// otherwise, and messages would be written into a drawing.
void OpenStandardStreams();

}  // namespace brenvik::app
