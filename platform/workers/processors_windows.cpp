// No process can be copied here.
#include "workers/processors.h"

namespace brenvik {

int ProcessorsToUse() { return 1; }

bool IsAloneInItsProcess() { return false; }

}  // namespace brenvik
