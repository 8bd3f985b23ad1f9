// Counting quotes: what stands around the texts is two for each.
#include "parts/statement_quotes.h"

#include <algorithm>
#include <string>

#include "base/failure.h"
#include "session/ports/database_failures.h"

namespace brenvik {

void RefusePairedQuotes(std::string_view statement, std::size_t texts) {
    const auto quotes = static_cast<std::size_t>(std::ranges::count(statement, '\''));
    if (quotes == 2 * texts || quotes % 2 != 0) return;
    throw Failure(failure_number::StatementRefused, std::string(OwnSource),
                  "Syntax error: a single quote stands in a text of the statement", std::string(statement));
}

}  // namespace brenvik
