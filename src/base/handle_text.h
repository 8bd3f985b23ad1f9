// The handle of an entity as text: hexadecimal, upper case, no leading zeros, as drawings write it and
// as the part table keeps it for a row's identity.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brenvik {

/// The handle's text: 0x1AF gives "1AF", 0 gives "0".
std::string HandleToText(std::uint64_t handle);

/// The handle that the whole text names, in either case, blanks around it allowed. Null if the
/// text is no hexadecimal number of at most 64 bits.
std::optional<std::uint64_t> HandleFromText(std::string_view text);

}  // namespace brenvik
