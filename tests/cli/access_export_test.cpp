// The list goes into a database of somebody else's: a journal drives the export dialog, a driver from the
// package archive stands registered under the name of the Access driver, and the database's own program
// reads the rows back.
#include <cstdlib>

#include "checkout_paths.h"
#include "played_journal.h"

namespace brenvik::cli_test {
namespace {

/// The columns that a target table must have, for the dialog asks for all of the list's.
constexpr std::string_view TargetTable =
    "create table Parts(bv_id, bv_qty, bv_partname, bv_subassembly, bv_material, bv_length real, bv_width "
    "real,"
    " bv_thickness real, bv_lwt, bv_x, bv_y, bv_z, bv_notes, bv_userdata1, bv_userdata2, bv_pn, bv_price,"
    " bv_eb1, bv_eb2, bv_eb3, bv_eb4, bv_face, bv_layer, bv_oldValue1, bv_oldValue2, bv_oldValue3,"
    " check(bv_partname <> 'Toe Kick'));"
    "create table MSysObjects(a); create table [Switchboard Items](a);";

class AccessExport : public PlayedJournal {
  protected:
    AccessExport() {
        Write("odbcinst.ini",
              "[Microsoft Access Driver (*.mdb)]\nDescription = SQLite files for exports\n"
              "Driver = libsqlite3odbc.so\nFileAttribute = Database\nMoreAttributes = "
              "NoCreat=1;Timeout=5000\n");
        setenv("ODBCSYSINI", folder.c_str(), 1);
        setenv("ODBCINSTINI", "odbcinst.ini", 1);
        Sql(TargetTable);
    }
    ~AccessExport() override {
        unsetenv("ODBCSYSINI");
        unsetenv("ODBCINSTINI");
    }

    /// Runs statements with the database's own program; what it prints.
    std::string Sql(std::string_view statements) const {
        Write("statements.sql", statements);
        const std::string command =
            "cd '" + folder.string() + "' && sqlite3 job.mdb < statements.sql > rows.txt";
        EXPECT_EQ(std::system(command.c_str()), 0);
        return Read("rows.txt");
    }

    Outcome Play(const std::string& steps) const {
        return PlayedJournal::Play("command Show\n  answer yes\n  press tbMain.EXPORT\n" + steps +
                                   "  close\n");
    }

    static constexpr const char* ChooseTable =
        "    pick cboExportType \"Export to Access Database\"\n"
        "    expect visible fraExportAccess\n"
        "    file \"job.mdb\"\n"
        "    press cmdBrowseAccess\n"
        "    expect items cboAccessTable \"(new)\" \"Parts\"\n"
        "    pick cboAccessTable \"Parts\"\n"
        "    expect visible fraExistingAccess\n";

    static std::string Map(const std::string& caption, const std::string& column) {
        return "    pick cboAccessFrom \"" + caption + "\"\n    pick cboAccessTableList \"" + column +
               "\"\n    press cmdAccessAdd\n";
    }
};

TEST_F(AccessExport, RowsReachTheTargetTableAndARefusedRowIsToldAndPassedOver) {
    const Outcome outcome = Play(ChooseTable + Map("Part Name", "bv_partname") + Map("Length", "bv_length") +
                                 Map("Thickness-Material (Metric)", "bv_notes") + "    press cmdGo\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("CHECK constraint failed"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("[Done.] Export Complete!!!"), std::string::npos) << outcome.errors;
    EXPECT_EQ(Sql("select count(*) from Parts;"), "15\n");
    EXPECT_EQ(
        Sql("select bv_partname, bv_length, typeof(bv_length), bv_notes from Parts where bv_partname like"
            " '%Side' order by 1;"),
        "Left Side|720.0|real|18 White Melamine\nRight Side|720.0|real|18 White Melamine\n");
}

TEST_F(AccessExport, TwoColumnsIntoOneFieldAreRefusedBeforeAnythingIsWritten) {
    const Outcome outcome = Play(ChooseTable + Map("Part Name", "bv_partname") + Map("Notes", "bv_partname") +
                                 "    press cmdGo\n    press cmdCancel\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("The columns Part Name and Notes both go into the field bv_partname. "),
              std::string::npos)
        << outcome.errors;
    EXPECT_EQ(Sql("select count(*) from Parts;"), "0\n");
}

TEST_F(AccessExport, ANewTableIsToldToHaveTakenNothing) {
    const Outcome outcome = Play(
        "    pick cboExportType \"Export to Access Database\"\n    file \"job.mdb\"\n"
        "    press cmdBrowseAccess\n    pick cboAccessTable \"(new)\"\n    press cmdGo\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("no row was written to "), std::string::npos) << outcome.errors;
    EXPECT_NE(
        outcome.errors.find(": expected a table that is there, found \"(new)\", and no table is made\n"),
        std::string::npos)
        << outcome.errors;
}

TEST_F(AccessExport, TypedSizesAndQuantitiesThatCannotBeAreTold) {
    const Outcome outcome = PlayedJournal::Play(
        "select 100 120 140\ncommand Show\n  cell fpSpread1 1 Width \"-5\"\n  cell fpSpread1 3 Qty \"two\"\n"
        "  press tbMain.EXPORT\n" +
        std::string(ChooseTable) + Map("Part Name", "bv_partname") + Map("Width", "bv_width") +
        Map("Qty", "bv_qty") + "    press cmdGo\n  close\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("it has no size in the export: Width -5; expected a size above 0"),
              std::string::npos)
        << outcome.errors;
    EXPECT_NE(outcome.errors.find("its quantity is \"two\", expected a whole number from 1 to 1000000"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(AccessExport, ARowThatTheDatabaseDropsIsTold) {
    Sql("create trigger dropped before insert on Parts when new.bv_partname = 'Back' begin select "
        "raise(ignore); "
        "end;");
    const Outcome outcome = Play(ChooseTable + Map("Part Name", "bv_partname") + "    press cmdGo\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find(
                  "The database took no row for a statement of the export, expected one: INSERT INTO "
                  "Parts (bv_partname) VALUES('Back')"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(AccessExport, RowsThatTakeThePlaceOfOthersAreReported) {
    Sql("drop table Parts; create table Parts(bv_id, bv_qty, "
        "bv_partname, bv_subassembly, bv_material unique on conflict replace, bv_length, bv_width, "
        "bv_thickness, bv_lwt, bv_x, bv_y, bv_z, bv_notes, bv_userdata1, bv_userdata2, bv_pn, bv_price, "
        "bv_eb1, bv_eb2, bv_eb3, bv_eb4, bv_face, bv_layer, bv_oldValue1, bv_oldValue2, bv_oldValue3);"
        "insert into Parts(bv_material) values('Cherry');");
    const Outcome outcome = PlayedJournal::Play(
        "select 100 120 156\ncommand Show\n  press tbMain.EXPORT\n" + std::string(ChooseTable) +
        Map("Part Name", "bv_partname") + Map("Material", "bv_material") + "    press cmdGo\n  close\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(
        outcome.errors.find("the table Parts took 3 rows and has 1 more than before; expected as many more"),
        std::string::npos)
        << outcome.errors;
    EXPECT_EQ(Sql("select count(*) from Parts;"), "2\n");
}

/// A block of the page for users that begins like this, without its fences.
std::string BlockOfThePage(std::string_view beginning) {
    const std::string page = ReadFile(std::filesystem::path(BRENVIK_SOURCE_DIR) / "docs/export-databases.md");
    const std::size_t at = page.find("```\n" + std::string(beginning));
    EXPECT_NE(at, std::string::npos) << beginning;
    return at == std::string::npos ? "" : page.substr(at + 4, page.find("```", at + 4) - at - 4);
}

TEST_F(AccessExport, TheTableOfThePageForUsersCanBeMappedAsPrinted) {
    Write("odbcinst.ini", BlockOfThePage("[Microsoft Access Driver (*.mdb)]"));
    Sql("drop table Parts;");
    Sql(BlockOfThePage("create table Parts("));
    const Outcome outcome =
        Play(ChooseTable + Map("Part Name", "bv_partname") + Map("Length", "bv_length") +
             Map("Width", "bv_width") + Map("Thickness", "bv_thickness") + "    press cmdGo\n");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(Sql("select count(*) from Parts;"), "16\n");
    EXPECT_EQ(
        Sql("select bv_partname, bv_length, bv_width, bv_thickness from Parts where bv_partname = 'Door';"),
        "Door|472|596|19\n");
}

TEST_F(AccessExport, TheJournalOfThePageForUsersWorksAsPrinted) {
    Sql("drop table Parts;");
    Sql(BlockOfThePage("create table Parts("));
    const Outcome outcome = PlayedJournal::Play(BlockOfThePage("command Show"));
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(Sql("select bv_partname, bv_length from Parts where bv_partname = 'Door';"), "Door|472\n");
}

TEST_F(AccessExport, ADatabaseThatCannotBeOpenedIsNamed) {
    // A machine where nobody has registered a driver.
    Write("odbcinst.ini", "");
    const Outcome outcome = Play(
        "    pick cboExportType \"Export to Access Database\"\n    file \"job.mdb\"\n"
        "    press cmdBrowseAccess\n    press cmdCancel\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("\nthe database job.mdb can't be opened: "), std::string::npos)
        << outcome.errors;
}

TEST_F(AccessExport, ARowWithQuotesFailsHoweverManyThereAre) {
    Write("quotes.journal", std::string("command Show\n  cell fpSpread1 1 \"Notes\" \"it''s\"\n  answer yes\n"
                                        "  press tbMain.EXPORT\n") +
                                ChooseTable + Map("Part Name", "bv_partname") + Map("Notes", "bv_notes") +
                                "    press cmdGo\n  close\n");
    const Outcome outcome = Run({"run", ShippedSample().string(), "--journal", "quotes.journal"});
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("[] Syntax error: a single quote stands in a text of the statement"),
              std::string::npos)
        << outcome.errors;
    EXPECT_EQ(Sql("select count(*) from Parts where bv_notes like 'it%';"), "0\n");
}

TEST_F(AccessExport, AFilteredListExportsItsRowsOnly) {
    Write("filtered.journal",
          std::string("command Show\n  press tbMain.FILTER\n"
                      "    pick cboCol(0) \"Material\"\n    type cboCritData(0) \"Cherry\"\n"
                      "    press btnOK\n  press tbMain.EXPORT\n") +
              ChooseTable + Map("Part Name", "bv_partname") + "    press cmdGo\n  close\n");
    const Outcome outcome = Run({"run", ShippedSample().string(), "--journal", "filtered.journal"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(Sql("select bv_partname from Parts order by 1;"), "Door\nDrawer Front\n");
}

TEST_F(AccessExport, ATableWithFewerColumnsIsToldByTheDriversWords) {
    Sql("drop table Parts; create table Parts(bv_partname);");
    const Outcome outcome = Play(
        "    pick cboExportType \"Export to Access Database\"\n    file \"job.mdb\"\n"
        "    press cmdBrowseAccess\n    pick cboAccessTable \"Parts\"\n    press cmdCancel\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("no such column: bv_id"), std::string::npos) << outcome.errors;
}

TEST_F(AccessExport, AMissingDatabaseIsTold) {
    const Outcome outcome = Play(
        "    pick cboExportType \"Export to Access Database\"\n    file \"none.mdb\"\n"
        "    press cmdBrowseAccess\n    press cmdCancel\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("[NOT FIND FILE] Access database File [none.mdb] cannot be found. Please "
                                  "relocate file,  if needed."),
              std::string::npos)
        << outcome.errors;
}

}  // namespace
}  // namespace brenvik::cli_test
