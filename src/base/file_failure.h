// Failures of files among the others: they come again with every file of a folder or disk, and are of no use
// to a reader without the path.
#pragma once

#include <string>
#include <utility>

#include "base/failure.h"

namespace brenvik {

namespace failure_number {
inline constexpr long InvalidFileFormat = 321;
}  // namespace failure_number

/// 321, "Invalid file format": a file that isn't of the form that it is read by. `detail` names the file, the
/// place, what was expected there and what was found.
inline Failure InvalidFileFormat(std::string detail) {
    return {failure_number::InvalidFileFormat, std::string(OwnSource), "Invalid file format",
            std::move(detail)};
}

/// A failure of the file system: its path is the detail.
inline bool IsOfFileSystem(const Failure& failure) {
    const long number = failure.number();
    return number >= failure_number::BadFileName && number <= failure_number::PathNotFound;
}

}  // namespace brenvik
