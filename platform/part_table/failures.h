// Failures of the part table.
#pragma once

#include <string>
#include <utility>

#include "base/failure.h"
#include "session/database_failures.h"

namespace brenvik::part_table {

/// A failure whose source is the part table. `detail` is the statement, where one is concerned.
inline Failure DatabaseFailure(long number, std::string description, std::string detail = {}) {
    return Failure(number, "Brenvik part table", std::move(description), std::move(detail));
}

}  // namespace brenvik::part_table
