// Texts of bodies that lie in memory unread: their records repeat each other, so that they take a fourth.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// The text with repetitions as references to what stands before them. Quick rather than thorough.
std::string Packed(std::string_view text);
/// The text that `packed` was made of.
std::string Unpacked(std::string_view packed);

}  // namespace brenvik
