// The grid form loaded on a list of solids, over fakes of every port.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "core/fakes/fake_platform.h"
#include "grid/frm_main.h"
#include "session/library/brenvik_class.h"

namespace brenvik {

class GridTest : public testing::Test {
  protected:
    GridTest() {
        TheSession().InstallFolder = "C:\\Brenvik\\";
        TheSession().AcadApp = &system.app;
        TheSession().AcadDoc = &system.Document();
    }

    frmMain& Main() { return GridFormInstance(); }
    GridControl& Grid() { return Main().fpSpread1; }
    CheckControl& Box(std::string_view name) { return Main().Get<CheckControl>(name); }
    std::string Cell(int column, int row) { return Grid().CellText(column, row); }
    /// Length, width and thickness of a row as the grid shows them.
    std::string Sizes(int row) { return Cell(6, row) + " " + Cell(7, row) + " " + Cell(8, row); }
    std::string Stored(int row, std::string_view column) {
        return system.database.Text(system.WorkPath, row - 1, column);
    }
    std::vector<std::string> StoredColumn(std::string_view column) {
        std::vector<std::string> texts;
        for (int row = 1; row <= Grid().MaxRows(); ++row) texts.push_back(Stored(row, column));
        return texts;
    }

    /// A solid with its extents as they were at the last Apply.
    fakes::FakeEntity& AddApplied(const std::string& handle, const std::string& letters, double d1, double d2,
                                  double d3) {
        fakes::FakeEntity& solid = system.AddSolid(handle, d1, d2, d3);
        solid.data["ORIE"] = letters;
        solid.data["OLDVALUE1"] = NumberToText(d1);
        solid.data["OLDVALUE2"] = NumberToText(d2);
        solid.data["OLDVALUE3"] = NumberToText(d3);
        return solid;
    }
    /// Three boards of one material each, without letters.
    void LoadThree() {
        system.AddSolid("A", 18, 600, 400).data["MATERIAL"] = "Oak";
        system.AddSolid("B", 16, 500, 300).data["MATERIAL"] = "Ash";
        system.AddSolid("C", 12, 900, 200).data["MATERIAL"] = "Oak";
        Main().Load();
        system.database.statements.clear();
    }
    /// What ran on the database since it was last asked for.
    std::vector<std::string> Statements() { return std::exchange(system.database.statements, {}); }
    void ShowStatement(const std::string& statement) {
        Main().Adodc1.recordSource = statement;
        Main().Adodc1.Refresh();
        system.database.statements.clear();
    }

    fakes::LoadedSystem system;
};

using Texts = std::vector<std::string>;

}  // namespace brenvik
