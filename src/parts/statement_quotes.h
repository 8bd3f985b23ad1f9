// Single quotes in the values of statements. No value is escaped, and a quote in one spoils its statement.
#pragma once

#include <cstddef>
#include <string_view>

namespace brenvik {

/// Refuses a statement with more quotes than stand around its texts, where the engine may not see the fault.
/// An odd number leaves a text open, and the engine says so by itself; an even number may pass, and put
/// another value into the table: two quotes in a row become one. `texts` is how many texts the statement was
/// made of. Fails with the number of a refused statement.
void RefusePairedQuotes(std::string_view statement, std::size_t texts);

}  // namespace brenvik
