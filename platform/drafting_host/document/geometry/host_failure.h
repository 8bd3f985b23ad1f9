// What the drafting host refuses, with the numbers and texts that callers show. Numbers are the host's
// own, so they never meet those of the language or of a database.
#pragma once

#include <string>
#include <string_view>

#include "base/failure.h"

/// The numbers that the host's refusals bear.
namespace brenvik::host_failure_number {

inline constexpr long KeyNotFound = -2145386476;
inline constexpr long DuplicateKey = -2145386475;
inline constexpr long WasErased = -2145386420;
inline constexpr long OnLockedLayer = -2145386239;
inline constexpr long Cancelled = -2147352567;
inline constexpr long InvalidArgument = -2147024809;
inline constexpr long NotPossible = -2145386445;

}  // namespace brenvik::host_failure_number

namespace brenvik::host_failure {

/// A name, position or handle that the drawing doesn't hold.
Failure KeyNotFound(std::string detail);
/// A name that the drawing holds already.
Failure DuplicateKey(std::string detail);
/// Any use of an object that was erased, or of a document that was closed.
Failure WasErased(std::string detail);
/// A change of an entity whose layer is locked.
Failure OnLockedLayer(std::string_view layer);
/// A prompt that got no answer.
Failure Cancelled(std::string_view prompt);
/// A value that the host doesn't accept; `detail` names it and says what is expected.
Failure InvalidArgument(std::string detail);
/// An operation that these objects don't allow; `detail` says why.
Failure NotPossible(std::string detail);
/// A file of another form than expected; line 0 where no line is to blame.
Failure InvalidFile(std::string_view file, std::size_t line, std::string_view expected,
                    std::string_view found);

}  // namespace brenvik::host_failure
