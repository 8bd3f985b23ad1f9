// Sizes in plan that count as nothing, in millimetres. The steps that make paths and the proof that looks at
// them go by the same ones.
#pragma once

namespace brenvik {

/// A twentieth of a millimetre counts nowhere, wood that stays as little as wood that goes: narrower rests
/// are the noise of rounded names.
inline constexpr double NegligibleWidth = 0.05;

/// What a path that is being made may take of the part: less than the proof allows, so that what the
/// arithmetic adds on the way to the file doesn't bring it over that.
inline constexpr double NegligibleTouch = 0.01;

/// A way out and a way back no further apart than the first are one: a slit that no bit follows. Shorter
/// than the second, which is twice that, it is hardly longer than wide and none.
inline constexpr double DoubledApart = 0.05, ShortestDoubled = 0.1;

}  // namespace brenvik
