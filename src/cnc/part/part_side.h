// The four sides of a part.
#pragma once

namespace brenvik {

/// Seen from above: Front and Back are lowest and highest Y, Left and Right lowest and highest X.
enum class PartSide { Front, Back, Left, Right };

}  // namespace brenvik
