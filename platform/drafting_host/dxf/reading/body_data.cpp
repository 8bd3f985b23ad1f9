// Gathering the chunks of bodies and joining them with their entities.
#include "drafting_host/dxf/reading/body_data.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/handle_text.h"
#include "drafting_host/acis/acis_text.h"
#include "drafting_host/dxf/data/entity_name.h"

namespace brenvik {
namespace {

std::optional<unsigned> HexDigit(char c) {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
    return std::nullopt;
}

/// Puts the bytes of a chunk behind the others; false for what are no pairs of digits.
bool AppendChunk(std::string& bytes, std::string_view digits) {
    while (!digits.empty() && digits.back() == ' ') digits.remove_suffix(1);
    if (digits.size() % 2 != 0) return false;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        const auto high = HexDigit(digits[at]), low = HexDigit(digits[at + 1]);
        if (!high || !low) return false;
        bytes += static_cast<char>(*high << 4U | *low);
    }
    return true;
}

/// Why the bytes are not those that the record announces; empty where they are.
std::string LengthDamage(const Group* length, std::size_t found) {
    if (length == nullptr) return {};
    try {
        if (IntegerOf(*length) == static_cast<long long>(found)) return {};
    } catch (const EntityRefused& refused) {
        return refused.reason;
    }
    return "its length (group 94) was expected to be that of its chunks, " + std::to_string(found) +
           " bytes, and says " + ShownName(length->value);
}

}  // namespace

void BodyData::Take(const Record& record) {
    if (record.name != "ACDSRECORD") return;
    constexpr int codeHandle = 320, codeLength = 94, codeChunk = 310;
    HandleValue handle = 0;
    Body body;
    for (const Group& group : record.groups) {
        if (group.code == codeHandle) handle = HandleOf(group);
        if (group.code != codeChunk) continue;
        if (body.line == 0) body.line = group.line;
        if (!AppendChunk(body.bytes, group.value) && body.damage.empty())
            body.damage = "a chunk of it (group 310) in " + mReading.Place(group.line) +
                          " holds other than pairs of hexadecimal digits";
    }
    if (handle == 0 || !acis::IsBinary(body.bytes)) return;
    if (body.damage.empty())
        body.damage = LengthDamage(FindGroup(record.groups, codeLength), body.bytes.size());
    body.section = mReading.file.sections.size() - 1;
    body.record = mReading.file.sections.back().records.size();
    // The first of two counts, as everywhere.
    mBodies.emplace(handle, std::move(body));
}

std::string BodyData::MissingReason(const Body* body) const {
    constexpr std::string_view wayOut = "; a drawing saved as DXF of release 2010, or a STEP file, has it";
    if (body != nullptr) return "its binary body is damaged: " + body->damage + std::string(wayOut);
    if (!mReading.isBinaryBodies) return "the body's text (group 1) was expected";
    return "its binary body (release 2013 and later) was expected in the section ACDSDATA, in a record "
           "(ACDSRECORD) with its handle" +
           std::string(wayOut);
}

bool BodyData::Joined(EntityData& entity) {
    auto* const data = std::get_if<AcisData>(&entity.geometry);
    if (data == nullptr || !data->text.empty()) return true;
    const auto found = mBodies.find(entity.handle);
    Body* const body = entity.handle == 0 || found == mBodies.end() ? nullptr : &found->second;
    if (body != nullptr && body->damage.empty()) {
        data->text = std::move(body->bytes);
        data->firstLine = mReading.unit == PlaceUnit::Line ? body->line : 0;
        mJoined.push_back(std::move(*body));
        mBodies.erase(found);
        return true;
    }
    std::string name(EntityName(entity.geometry));
    if (entity.handle != 0) name += " (handle " + HandleToText(entity.handle) + ")";
    mReading.Note(body == nullptr ? data->firstLine : body->line, name + " left out: " + MissingReason(body));
    return false;
}

void BodyData::KeepRecord(const BlockData& block, HandleValue handle, std::size_t place) {
    const auto record = mReading.bodyRecords.find(handle);
    if (record == mReading.bodyRecords.end()) return;
    record->second.place = place;
    std::vector<KeptRecord>& kept = mReading.keptBlocks[block.name].entities;
    const auto behind = std::ranges::upper_bound(kept, place, {}, &KeptRecord::place);
    kept.insert(behind, std::move(record->second));
}

void BodyData::JoinBlock(BlockData& block) {
    std::size_t place = 0;
    std::erase_if(block.entities, [&](EntityData& entity) {
        if (Joined(entity)) {
            ++place;
            return false;
        }
        KeepRecord(block, entity.handle, place);
        return true;
    });
}

// What became a value of the drawing would be a leaving of an older state when that is saved.
void BodyData::ForgetJoined() {
    std::ranges::sort(mJoined, [](const Body& a, const Body& b) {
        return std::pair(a.section, a.record) > std::pair(b.section, b.record);
    });
    for (const Body& body : mJoined) {
        auto& records = mReading.file.sections[body.section].records;
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(body.record));
    }
}

void BodyData::Join() {
    for (BlockData& block : mReading.data.blocks) JoinBlock(block);
    ForgetJoined();
    mBodies.clear();
    mJoined.clear();
    mReading.bodyRecords.clear();
}

}  // namespace brenvik
