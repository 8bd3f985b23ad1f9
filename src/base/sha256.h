// A text's fingerprint: whether two contents are the same, without having both.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// The SHA-256 of the bytes, as 64 hexadecimal digits.
std::string Sha256(std::string_view bytes);

}  // namespace brenvik
