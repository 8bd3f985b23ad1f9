// What reading a drawing may use of the machine.
#pragma once

namespace brenvik {

/// On how many processors this program reads the bodies of a drawing from now on; 1 at first.
void ReadBodiesOn(int processors);

}  // namespace brenvik
