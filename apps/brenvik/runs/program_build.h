// Which build of the program is at work: two of one version may write different numbers.
#pragma once

#include <string>

namespace brenvik::app {

/// The mark that the linker has given the program, or the fingerprint of its file where there is none.
std::string BuildOfProgram();
/// One fingerprint of the libraries that geometry is computed by, as they are loaded; blank where they are
/// in the program itself.
std::string BuildOfModeller();

}  // namespace brenvik::app
