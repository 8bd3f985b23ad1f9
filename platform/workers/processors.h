// How much of the machine this program may use at once.
#pragma once

namespace brenvik {

/// The processors that the system lets this program run on, or a share of them where it has a quota; at least
/// 1.
int ProcessorsToUse();

/// Whether this process can be copied as it stands: only the thread that asks lives on in a copy, so that
/// whatever another one holds at that moment would be held for ever.
bool IsAloneInItsProcess();

}  // namespace brenvik
