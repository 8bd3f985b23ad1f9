// Sorting, grouping and filtering from the dialogs, with the statements run on the part table itself.
#include <algorithm>

#include "forms/form.h"
#include "grid/frm_main.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "query/list_options.h"
#include "session/dialog_port.h"
#include "session/files_port.h"
#include "session/measuring_port.h"
#include "session/module_state.h"
#include "session/session.h"
#include "session/settings_port.h"
#include "table_fixture.h"

namespace brenvik {
namespace {

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
    std::unique_ptr<SolidMeasurer> CreateMeasurer() override { throw CannotCreateObject(); }
};

/// The grid form on a table of six parts, as a scan leaves it.
class ListStatements : public PartTable {
  protected:
    ListStatements() {
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
    ~ListStatements() override { UnloadSystem(); }

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

TEST_F(ListStatements, Sorts) {
    Apply("Length desc, Part Name", "", "");
    EXPECT_EQ(Shown("Length"), "700|700|700|600.5|600.5|80");
    EXPECT_EQ(Shown("bv_ID"), "5|1|2|6|3|4") << "names compare without case";
    EXPECT_TRUE(GridFormInstance().Adodc1.Records()->Updatable());
}

TEST_F(ListStatements, FiltersByEachOperator) {
    struct Case {
        const char *filter, *ids;
    };
    for (const Case& each : {Case{"Material = OAK", "1|2|4"},
                             {"Material <> Oak", "3|5|6"},
                             {"Length > 600.5", "1|2|5"},
                             {"Length < 600.5", "4"},
                             {"Part Name like side", "1|2|4"},
                             {"Part Name like %side", "1|2|5"},
                             {"Part Name =", "6"},
                             {"Qty = 1", "1|2|3|4|5|6"},
                             {"Qty > 1", ""},
                             {"Notes = none", ""}}) {
        Apply("ORIE", "", each.filter);
        EXPECT_EQ(Shown("bv_ID"), each.ids) << each.filter;
    }
    EXPECT_EQ(boxes.texts, std::vector<std::string>{});
}

TEST_F(ListStatements, GroupsCountTheParts) {
    Apply("Length desc, Material", "Material, Length", "Length > 100");
    EXPECT_EQ(Shown("Qty"), "1|2|1|1");
    EXPECT_EQ(Shown("Length"), "700|700|600.5|600.5");
    EXPECT_EQ(Shown("Part Name"), "|||") << "not in the statement";
    EXPECT_EQ(Shown("bv_ID"), "|||");
    EXPECT_FALSE(GridFormInstance().Adodc1.Records()->Updatable());
}

TEST_F(ListStatements, AGroupOfAllBoxesRuns) {
    auto& form = StateOf<frmNewSort>();
    form.PressByCode("Command1");
    form.PressByCode("btnOK");
    EXPECT_FALSE(form.StatementRefused());
    EXPECT_EQ(GridFormInstance().fpSpread1.MaxRows(), 5) << "two sides are one board";
}

TEST_F(ListStatements, AQuoteInTheValueIsRefusedAndKeepsTheRows) {
    EXPECT_EQ(FailureOf([] { Apply("", "", "Material = O'ak"); }).number(), failure_number::invalidCall);
    EXPECT_EQ(boxes.texts,
              std::vector<std::string>{"-2147217900\r\nBrenvik part table\r\nnear \"ak\": syntax error"});
    EXPECT_EQ(Shown("bv_ID"), "1|2|3|4|5|6");
}

TEST_F(ListStatements, ASortByTheBlankColumnIsRefused) {
    auto& form = StateOf<frmNewSort>();
    form.Load();
    form.List2.AddItem("  [Asc]");
    form.PressByCode("btnOK");
    EXPECT_TRUE(form.StatementRefused());
    EXPECT_EQ(boxes.texts.size(), 1U);
    EXPECT_EQ(Shown("bv_ID"), "1|2|3|4|5|6");
}

TEST_F(ListStatements, OffersTheValuesOfAColumnOnce) {
    auto& form = StateOf<frmFilter>();
    form.Load();
    form.RetrieveColData("bv_length", 0);
    std::vector<std::string> lengths = form.cboCritData[0]->Items();
    std::ranges::sort(lengths);
    EXPECT_EQ(lengths, (std::vector<std::string>{"600.5", "700", "80"}));
    form.RetrieveColData("bv_material", 0);
    EXPECT_EQ(form.cboCritData[0]->ListCount(), 2) << "Oak and Birch, in one case each, and no blank";
}

}  // namespace
}  // namespace brenvik
