// Failures of files among the others: they come again with every file of a folder or disk, and are of no use
// to a reader without the path.
#pragma once

#include "base/failure.h"

namespace brenvik {

/// A failure of the file system: its path is the detail.
inline bool IsOfFileSystem(const Failure& failure) {
    const long number = failure.number();
    return number >= failure_number::BadFileName && number <= failure_number::PathNotFound;
}

}  // namespace brenvik
