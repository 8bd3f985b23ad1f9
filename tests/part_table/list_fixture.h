// The grid form on the part table itself, with a list of six parts and nothing else around it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "forms/form.h"
#include "grid/frm_main.h"
#include "query/list_driver.h"
#include "query/list_options.h"
#include "session/library/loading.h"
#include "session/ports/dialog_port.h"
#include "session/ports/files_port.h"
#include "session/ports/measuring_port.h"
#include "session/ports/settings_port.h"
#include "session/session.h"
#include "table_fixture.h"

namespace brenvik {

class Boxes : public DialogPort {
  public:
    std::vector<std::string> texts;
    void ShowModal(Form& form) override { form.Load(); }
    MessageAnswer Show(const MessageRequest& request) override {
        texts.push_back(request.text);
        return MessageAnswer::Ok;
    }
    std::optional<std::string> ChooseFile(const FileRequest&) override { return std::nullopt; }
    void DoEvents() override {}
};

class SwitchesOff : public SettingsPort {
  public:
    std::string GetSetting(SettingsRoot, std::string_view, std::string_view name) override {
        return name == "MDBPath" ? "c:\\bv04.mdb" : "0";
    }
    void SaveSetting(SettingsRoot, std::string_view, std::string_view, std::string_view) override {}
    void DeleteSetting(SettingsRoot, std::string_view, std::string_view) override {}
    std::vector<std::pair<std::string, std::string>> EnumerateSettings(SettingsRoot,
                                                                       std::string_view) override {
        return {};
    }
};

class NoFiles : public FilesPort {
  public:
    std::string InstallFolder() override { return "c:\\"; }
    bool FileExists(std::string_view) override { return false; }
    bool FolderExists(std::string_view) override { return false; }
    void RemoveFile(std::string_view) override {}
    void CopyFileOver(std::string_view, std::string_view) override {}
    void MakeFolder(std::string_view) override {}
    std::vector<std::string> ListFiles(std::string_view, std::string_view) override { return {}; }
    std::string ReadFile(std::string_view) override { return {}; }
    void WriteFile(std::string_view, std::string_view) override {}
};

class NoMeasuring : public MeasuringPort {
  public:
    std::unique_ptr<SolidMeasurer> CreateMeasurer() override { throw ObjectNotSet(); }
};

/// The grid form on a table of six parts, as a scan leaves it.
class ListOnTable : public PartTable {
  protected:
    ListOnTable() {
        LoadSystem({&boxes, &settings, &database, &files, &measuring, nullptr, nullptr});
        // With no drawing open the scan tells so and leaves an empty table that the grid is bound to.
        GridFormInstance().Load();
        boxes.texts.clear();
        Insert("1", "Side", "Oak", "700");
        Insert("2", "side", "oak", "700");
        Insert("3", "Back", "Birch", "600.5");
        Insert("4", "Side Strip", "Oak", "80");
        Insert("5", "Left Side", "Birch", "700");
        Insert("6", "", "", "600.5");
        GridFormInstance().Adodc1.Refresh();
    }
    ~ListOnTable() override { UnloadSystem(); }

    /// What the grid shows in a column, parted by bars.
    static std::string Shown(const std::string& header) {
        const GridControl& grid = GridFormInstance().fpSpread1;
        std::string text;
        for (int column = 1; column <= grid.MaxCols(); ++column) {
            if (grid.Column(column).header != header) continue;
            for (int row = 1; row <= grid.MaxRows(); ++row)
                text += (row == 1 ? "" : "|") + grid.CellText(column, row);
        }
        return text;
    }
    static void Apply(const char* sort, const char* group, const char* filter) {
        ApplyListChoices(ParseListChoices(sort, group, filter));
    }

    Boxes boxes;
    SwitchesOff settings;
    NoFiles files;
    NoMeasuring measuring;
};

}  // namespace brenvik
