// Claiming at the first use, and anew where the program has put a fresh file in the place of its own: it
// closes what is open before it does, and other programs can't.
#include "part_table/database_claims.h"

#include <utility>

#include "part_table/failures.h"

namespace brenvik::part_table {

DatabaseClaims::DatabaseClaims(FileClaimer claimer) : mClaimer(std::move(claimer)) {}

std::shared_ptr<const void> DatabaseClaims::Require(const std::filesystem::path& file) {
    if (!mClaimer) return nullptr;
    const std::optional<FileIdentity> identity = IdentityOf(file);
    if (!identity) return nullptr;
    const auto [place, isNew] = mEntries.try_emplace(file);
    Entry& entry = place->second;
    const bool refused = !isNew && entry.claim == nullptr;
    if (!refused && (isNew || entry.identity != *identity)) {
        const bool isOpen = entry.claim.use_count() > 1;
        if (isOpen) throw Replaced(file);
        entry = {*identity, mClaimer(file)};
    }
    if (entry.claim == nullptr)
        throw Unavailable(file,
                          "is in use by another program, whose list must not mix with this one: wait for its "
                          "end, or set another MDBPath, or a blank one");
    return entry.claim;
}

}  // namespace brenvik::part_table
