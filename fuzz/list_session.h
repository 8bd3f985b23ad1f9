// What the readers of export files stand on: a session whose columns are known, and a list of one part.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "base/letter_case.h"
#include "core/fakes/fake_platform.h"
#include "grid/column_relation.h"
#include "session/ports/database_port.h"

namespace brenvik::fuzz {

/// The library on ports in memory for as long as it lives.
struct ListSession {
    ListSession() { ColHeadRelationShip(); }
    fakes::LoadedSystem system;
};

/// One part with sizes, texts, a null and fewer columns than a profile can name.
class OnePart : public Recordset {
  public:
    bool Eof() const override { return atEnd; }
    void MoveNext() override { atEnd = true; }
    int RecordCount() const override { return 1; }
    int FieldCount() const override { return static_cast<int>(fields.size()); }
    std::string FieldName(int index) const override { return Field(index).first; }
    FieldValue Value(std::string_view fieldName) const override {
        for (const auto& [name, value] : fields)
            if (EqualsIgnoreCase(name, fieldName)) return value;
        throw Failure(3265, "OnePart", "no such field", std::string(fieldName));
    }
    FieldValue Value(int index) const override { return Field(index).second; }
    FieldValue ValueAt(int, int index) const override { return Field(index).second; }
    bool Updatable() const override { return false; }
    void Update(int, int, const FieldValue&) override {}
    void Close() override {}

  private:
    using Entry = std::pair<std::string, FieldValue>;
    const Entry& Field(int index) const { return fields.at(static_cast<std::size_t>(index)); }

    bool atEnd = false;
    std::array<Entry, 7> fields{{{"bv_qty", "1"},
                                 {"bv_partname", "Door"},
                                 {"bv_material", "Oak"},
                                 {"bv_length", 600.5},
                                 {"bv_width", 24.0},
                                 {"bv_thickness", 0.75},
                                 {"bv_notes", {}}}};
};

}  // namespace brenvik::fuzz
