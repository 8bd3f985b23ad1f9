// A grid bound to a part table of two parts in memory.
#pragma once

#include <gtest/gtest.h>

#include "core/fakes/fake_database.h"
#include "forms/grid_control.h"
#include "parts/part_table.h"

namespace brenvik {

inline constexpr const char* Path = "c:\\work.mdb";

class BoundGrid : public testing::Test {
  protected:
    BoundGrid()
        : data("Adodc1", [this] { return database.CreateConnection(); }),
          grid("fpSpread1", {{"bv_id", "bv_ID", 10, true, true},
                             {"BV_PARTNAME", "Part Name", 20, false, false},
                             {"bv_length", "Length", 10, false, false},
                             {"bv_nowhere", "Nowhere", 10, false, false},
                             {"bv_layer", "Layer", 10, false, true}}) {
        database.CreateBlankPartDatabase(Path);
        AddPart("A", "Side", 600.5);
        AddPart("B", "Shelf", 0.375);
        database.databases[Path][1][2] = std::monostate();
        data.connectionString = "Data Source=c:\\work.mdb;";
        data.recordSource = ScanSelect;
    }

    void AddPart(const char* id, const char* name, double length) {
        fakes::Row row(PartColumns().size());
        row[0] = id;
        row[2] = name;
        row[5] = length;
        row[22] = "0";
        database.databases[Path].push_back(row);
    }
    void Bind() {
        grid.SetDataSource(&data);
        data.Refresh();
    }
    std::string Name(int row) const { return database.Text(Path, row, "bv_partname"); }

    fakes::FakeDatabase database;
    DataControl data;
    GridControl grid;
};

}  // namespace brenvik
