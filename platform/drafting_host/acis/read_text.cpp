// Reading whole data, text or binary: every body record is built on its own, so that one that cannot be read
// does not take the others with it.
#include "drafting_host/acis/acis_text.h"
#include "drafting_host/acis/binary_records.h"
#include "drafting_host/acis/shape_builder.h"

#include <algorithm>

namespace brenvik::acis {
namespace {

/// The head counts the bodies, and with them the record that heads late texts.
void CheckBodyCount(const RecordText& split, std::vector<Problem>& problems) {
    const auto named = [&](std::string_view name) {
        return std::ranges::count(split.records, name, &Record::name);
    };
    const long bodies = named("body"), all = bodies + named("asmheader");
    const long declared = split.header.declaredBodies;
    // Some writers leave their header out of the count.
    if (!split.problems.empty() || declared == all || declared == bodies) return;
    const std::string found =
        "the head counts " + std::to_string(declared) + " bodies, found " + std::to_string(bodies);
    if (declared > all)
        problems.push_back({1, -1, found});
    else
        problems.push_back({1, -1, found + ": all of them are read", false});
}

}  // namespace

ReadResult ReadText(std::string_view text) {
    RecordText split = IsBinary(text) ? SplitBinaryRecords(text) : SplitRecords(text);
    ReadResult result;
    result.header = split.header;
    result.recordCount = split.records.size();
    const Model model(split);
    std::size_t budget = 4 * split.records.size();
    for (std::size_t i = 0; split.readable && i < split.records.size(); ++i) {
        if (split.records[i].name != "body") continue;
        const long index = static_cast<long>(i);
        try {
            BuiltBody body = BuildBody(model, index, budget);
            result.bodies.push_back(body.shape);
            result.bodyRecords.push_back(index);
            result.problems.insert(result.problems.end(), body.remarks.begin(), body.remarks.end());
        } catch (const BadRecord& bad) {
            const bool known = bad.record >= 0 && static_cast<std::size_t>(bad.record) < split.records.size();
            const std::size_t line =
                known ? split.records[static_cast<std::size_t>(bad.record)].line : split.records[i].line;
            result.problems.push_back(
                {line, known ? bad.record : index,
                 "body record " + std::to_string(index) + " is left out: " + bad.what()});
        }
    }
    if (split.readable && split.problems.empty() && result.bodies.empty() && result.problems.empty())
        result.problems.push_back({0, -1, "the text holds no body record"});
    if (split.readable) CheckBodyCount(split, result.problems);
    result.problems.insert(result.problems.begin(), split.problems.begin(), split.problems.end());
    return result;
}

}  // namespace brenvik::acis
