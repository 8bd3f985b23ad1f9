// The kinds of drawings that a person chooses from when a file is opened or saved.
#pragma once

#include <QString>

namespace brenvik::desktop {

/// All that can be read; names in capital letters too, which other systems give.
QString FilterForOpening();
QString FilterForSaving();

}  // namespace brenvik::desktop
