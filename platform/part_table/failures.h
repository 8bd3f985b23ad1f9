// Failures of the part table.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

#include "base/failure.h"
#include "base/path_text.h"
#include "session/ports/database_failures.h"

namespace brenvik::part_table {

/// A failure whose source is the part table. `detail` is the statement, where one is concerned.
inline Failure DatabaseFailure(long number, std::string description, std::string detail = {}) {
    return Failure(number, "Brenvik part table", std::move(description), std::move(detail));
}

/// A file that can't be used, with the reason: "can't be found".
inline Failure Unavailable(const std::filesystem::path& file, const std::string& reason) {
    return DatabaseFailure(failure_number::DatabaseUnavailable,
                           "The part database " + PathText(file) + " " + reason);
}

/// A file that took the place of one that is open.
inline Failure Replaced(const std::filesystem::path& file) {
    return Unavailable(file, "was replaced by another file since it was opened");
}

}  // namespace brenvik::part_table
