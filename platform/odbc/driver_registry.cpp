// Walking the list of drivers.
#include "odbc/driver_registry.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "base/letter_case.h"
#include "base/text.h"
#include "odbc/wide_text.h"

namespace brenvik::odbc {
namespace {

// Registrations are short; what doesn't fit in here is cut by the manager.
constexpr std::size_t NameRoom = 512;
constexpr std::size_t AttributesRoom = 8192;

// The attributes come as "name=value" texts, each with a zero at its end, and an empty one at the end of all.
Registration ReadAttributes(std::span<const SQLWCHAR> texts) {
    Registration registration;
    std::string libraryOfWideMachines;
    for (auto begin = texts.begin(); begin != texts.end() && *begin != 0;) {
        const auto end = std::find(begin, texts.end(), SQLWCHAR{0});
        const HeadAndTail parts = SplitAtFirst(FromWide({begin, end}), '=');
        const std::string name = Trim(parts.head);
        const std::string value = Trim(parts.tail);
        if (EqualsIgnoreCase(name, "FileAttribute")) registration.entry.fileAttribute = value;
        if (EqualsIgnoreCase(name, "MoreAttributes")) registration.entry.moreAttributes = value;
        if (EqualsIgnoreCase(name, "Driver")) registration.library = value;
        if (EqualsIgnoreCase(name, "Driver64")) libraryOfWideMachines = value;
        begin = end == texts.end() ? end : end + 1;
    }
    if (sizeof(void*) == 8 && !libraryOfWideMachines.empty()) registration.library = libraryOfWideMachines;
    return registration;
}

}  // namespace

Registration RegistrationOf(const Handle& environment, std::string_view driverName) {
    std::vector<SQLWCHAR> name(NameRoom);
    std::vector<SQLWCHAR> attributes(AttributesRoom);
    for (SQLUSMALLINT direction = SQL_FETCH_FIRST;; direction = SQL_FETCH_NEXT) {
        SQLSMALLINT nameLength = 0;
        SQLSMALLINT attributesLength = 0;
        std::fill(attributes.begin(), attributes.end(), SQLWCHAR{0});
        const SQLRETURN result = SQLDriversW(environment.Get(), direction, name.data(), NameRoom, &nameLength,
                                             attributes.data(), AttributesRoom, &attributesLength);
        if (!SQL_SUCCEEDED(result)) return {{}, std::string(driverName)};
        const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(nameLength), NameRoom - 1);
        if (EqualsIgnoreCase(FromWide({name.data(), length}), driverName)) return ReadAttributes(attributes);
    }
}

}  // namespace brenvik::odbc
