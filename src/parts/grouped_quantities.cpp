// The rows of the groups, as the filter leaves them.
#include "parts/grouped_quantities.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/skip.h"
#include "base/text.h"
#include "forms/field_text.h"
#include "parts/mdatabase.h"
#include "parts/part_data_faults.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "session/session.h"

namespace brenvik {

namespace {

struct Group {
    std::string handle, name;  ///< Of its first row.
    int rows = 0;
    double quantities = 0;
};

/// The values that rows are grouped by; texts compare without case, as the part table does.
using Key = std::vector<std::string>;

Key KeyOf(const Recordset& records, const std::vector<std::string>& fields) {
    Key key;
    for (const std::string& field : fields) key.push_back(FoldLower(FieldText(records.Value(Trim(field)))));
    return key;
}

}  // namespace

void NoteGroupedQuantities() {
    const Session& session = TheSession();
    if (session.GroupFields.empty()) return;
    const std::vector<std::string> fields = Split(session.GroupFields, ',');
    std::string statement = FullSelect();
    if (!session.WhereClause.empty()) statement += " " + session.WhereClause;
    std::unique_ptr<Recordset> records;
    Skip([&] { mDatabase::OpenRecordset(statement, records); });
    if (records == nullptr) return;
    std::map<Key, Group> groups;
    Skip([&] {
        for (; !records->Eof(); records->MoveNext()) {
            Group& group = groups[KeyOf(*records, fields)];
            if (group.rows++ == 0) {
                group.handle = FieldText(records->Value("bv_id"));
                group.name = FieldText(records->Value("bv_partname"));
            }
            group.quantities += PartsOf(FieldText(records->Value("bv_qty")));
        }
    });
    Skip([&] { mDatabase::CloseRecordset(records); });
    for (auto& [key, group] : groups)
        if (group.quantities != group.rows)
            NotePartTrouble(
                {std::move(group.handle), std::move(group.name),
                 "its group counts " + std::to_string(group.rows) + (group.rows == 1 ? " row" : " rows") +
                     "; the quantities of these rows add up to " + NumberToText(group.quantities)});
}

}  // namespace brenvik
