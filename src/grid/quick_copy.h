// Quick Copy as the user asks for it: the entry guard ahead of the work.
#pragma once

namespace brenvik {

class frmMain;

/// Refuses, with a message, a grouped list, no chosen cell, and cells that a copy would make untrue;
/// otherwise runs `QCopy`, and fails as that does.
void QuickCopy(frmMain& form);

}  // namespace brenvik
