// Solids are compared by their marks: the list's columns know nothing of holes and of left and right.
#include "export/cnc_group_check.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/skip.h"
#include "base/text.h"
#include "export/export_troubles.h"
#include "export/record_values.h"
#include "parts/mdatabase.h"
#include "parts/part_data_faults.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "session/ports/host_interface.h"
#include "session/ports/measuring_port.h"
#include "session/ports/shape_marks.h"
#include "session/session.h"

namespace brenvik {

namespace {

struct ListRow {
    std::string name;
    double quantity = 1;
};

using RowsById = std::map<std::string, ListRow>;

RowsById PartsOfTheList() {
    RowsById parts;
    std::unique_ptr<Recordset> records;
    ResumeNoted("the quantities of the list were not compared with the parts that this run makes", [&] {
        mDatabase::OpenRecordset(FullSelect(), records);
        for (; !records->Eof(); records->MoveNext())
            parts[ValueText(records->Value("bv_id"))] = {ValueText(records->Value("bv_partname")),
                                                         PartsOf(ValueText(records->Value("bv_qty")))};
    });
    if (records == nullptr) return parts;
    Skip([&] { mDatabase::CloseRecordset(records); });
    return parts;
}

/// Null if the solid can't be looked at.
std::optional<ShapeMarks> MarksOf(ShapeMarker& marker, const std::string& handle) {
    std::optional<ShapeMarks> marks;
    Skip([&] {
        const auto* entity = dynamic_cast<AcadEntity*>(TheSession().AcadDoc->HandleToObject(handle));
        if (entity != nullptr) marks = marker.MarksOf(entity->ObjectID());
    });
    return marks;
}

void LookAtSolids(ShapeMarker& marker, const CncGroup& group, const RowsById& parts) {
    const std::optional<ShapeMarks> first = MarksOf(marker, group.front());
    std::vector<std::string> different;
    for (std::size_t i = 1; i < group.size(); ++i) {
        const std::optional<ShapeMarks> marks = MarksOf(marker, group[i]);
        if (first && marks && MayBeEqual(*first, *marks)) continue;
        const auto part = parts.find(group[i]);
        different.push_back(PartLabel(group[i], part == parts.end() ? std::string() : part->second.name));
    }
    if (different.empty()) return;
    const auto part = parts.find(group.front());
    NotePartTrouble({group.front(), part == parts.end() ? std::string() : part->second.name,
                     "its files are made " + std::to_string(group.size()) +
                         " times, for all parts with the same line in the list, but of these the solids of " +
                         Join(different, ", ") +
                         " differ from it; expected a part number (PN) of its own for each different solid"});
}

void LookAtQuantities(const CncGroup& group, const RowsById& parts) {
    double sum = 0;
    for (const std::string& handle : group)
        if (const auto part = parts.find(handle); part != parts.end()) sum += part->second.quantity;
    const auto first = parts.find(group.front());
    if (first == parts.end() || sum == static_cast<double>(group.size())) return;
    NotePartTrouble({group.front(), first->second.name,
                     "the run makes " + std::to_string(group.size()) +
                         " of it, one for each row of the list; the quantities of these rows add up to " +
                         NumberToText(sum) +
                         (first->second.quantity == 1 ? "" : ", and the run leaves 1 on the solid")});
}

}  // namespace

void LookAtCncGroups(std::span<const CncGroup> groups) {
    const RowsById parts = PartsOfTheList();
    std::unique_ptr<SolidMeasurer> measurer;
    const bool areGrouped =
        std::ranges::any_of(groups, [](const CncGroup& group) { return group.size() > 1; });
    if (areGrouped)
        ResumeNoted("the solids of parts that this run makes from one were not compared",
                    [&] { measurer = ThePlatform().measuring->CreateMeasurer(); });
    auto* marker = dynamic_cast<ShapeMarker*>(measurer.get());
    for (const CncGroup& group : groups) {
        LookAtQuantities(group, parts);
        if (marker != nullptr && group.size() > 1) LookAtSolids(*marker, group, parts);
    }
}

}  // namespace brenvik
