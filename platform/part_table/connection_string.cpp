// Cutting a connection string into its attributes.
#include "part_table/connection_string.h"

#include "base/letter_case.h"
#include "base/text.h"
#include "part_table/failures.h"

namespace brenvik::part_table {
namespace {

constexpr std::string_view KnownProvider = "Microsoft.Jet.OLEDB.4.0";

// The end of the value that begins at `at`: a semicolon outside quotes, or the end of the text.
std::size_t ValueEnd(std::string_view text, std::size_t at) {
    const std::size_t first = text.find_first_not_of(' ', at);
    if (first != std::string_view::npos && (text[first] == '"' || text[first] == '\'')) {
        std::size_t closing = text.find(text[first], first + 1);
        while (closing != std::string_view::npos && text.substr(closing + 1).starts_with(text[first]))
            closing = text.find(text[first], closing + 2);
        if (closing == std::string_view::npos)
            throw DatabaseFailure(
                failure_number::DatabaseUnavailable,
                "The connection string has a quoted value with no end: " + std::string(text));
        at = closing + 1;
    }
    const std::size_t end = text.find(';', at);
    return end == std::string_view::npos ? text.size() : end;
}

std::string Unquoted(const std::string& value) {
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    if (!quoted) return value;
    std::string inner;
    for (std::size_t at = 1; at + 1 < value.size(); ++at) {
        inner += value[at];
        if (value[at] == value.front()) ++at;
    }
    return inner;
}

}  // namespace

ConnectionString ParseConnectionString(std::string_view text) {
    ConnectionString result;
    std::string provider;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t equals = text.find('=', at);
        const std::size_t semicolon = text.find(';', at);
        if (semicolon < equals || equals == std::string_view::npos) {
            const std::size_t end = semicolon == std::string_view::npos ? text.size() : semicolon;
            if (!IsBlank(text.substr(at, end - at)))
                throw DatabaseFailure(failure_number::DatabaseUnavailable,
                                      "The connection string has \"" + Trim(text.substr(at, end - at)) +
                                          "\" where an attribute name=value was expected");
            at = end + 1;
            continue;
        }
        const std::size_t end = ValueEnd(text, equals + 1);
        const std::string name = Trim(text.substr(at, equals - at));
        const std::string value = Unquoted(Trim(text.substr(equals + 1, end - equals - 1)));
        if (EqualsIgnoreCase(name, "Provider")) provider = value;
        if (EqualsIgnoreCase(name, "Data Source")) result.dataSource = value;
        if (EqualsIgnoreCase(name, "Mode")) result.readOnly = EqualsIgnoreCase(value, "Read");
        at = end + 1;
    }
    if (!EqualsIgnoreCase(provider, KnownProvider))
        throw DatabaseFailure(failure_number::DatabaseUnavailable,
                              "Provider cannot be found: \"" + provider + "\" where " +
                                  std::string(KnownProvider) + " was expected");
    if (result.dataSource.empty())
        throw DatabaseFailure(failure_number::DatabaseUnavailable,
                              "The connection string names no data source");
    return result;
}

}  // namespace brenvik::part_table
