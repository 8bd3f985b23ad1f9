// The export into Access tables: login, tables, fields, and the exact statements.
#include "export/access_export.h"

#include <gtest/gtest.h>

#include "core/export/export_fixture.h"
#include "export/export_troubles.h"
#include "export/frm_login.h"

namespace brenvik {
namespace {

const char* const invalidPassword = "[Microsoft][ODBC Microsoft Access Driver] Not a valid password.";
const std::string openString = "Driver={Microsoft Access Driver (*.mdb)};Dbq=C:\\shop.mdb;Uid=Admin;Pwd=;";

Failure WrongPassword() { return Failure(-2147217843, "ODBC", invalidPassword); }

class AccessTarget : public ExportTest {
  protected:
    AccessTarget() {
        files.contents["C:\\shop.mdb"] = "";
        target.tables = {"Parts"};
        target.fields = {{"Number", 3}, {"Name", 202}, {"Size", 5}};
        Open();
        Form().cboExportType.SetListIndex(1);
        Form().txtExportAccess.SetText("C:\\shop.mdb");
    }
    /// The file opens with this password alone.
    void Protect(const std::string& password) {
        target.onOpen = [password](const std::string& connectionString) {
            if (connectionString.find("Pwd=" + password + ";") == std::string::npos) throw WrongPassword();
        };
    }
    /// The user tries these passwords, one at each login, and then gives up.
    void TypePasswords(std::vector<std::string> passwords) {
        dialogs.onModal = [this, passwords = std::move(passwords)](brenvik::Form& form) mutable {
            auto& loginForm = dynamic_cast<frmLogin&>(form);
            loginsSeen.push_back(loginForm.txtUsername.Text() + "/" + loginForm.txtPassword.Text());
            if (passwords.empty()) return loginForm.Get<Control>("cmdCancel").Press();
            loginForm.txtPassword.SetText(passwords.front());
            passwords.erase(passwords.begin());
            loginForm.Get<Control>("cmdLogin").Press();
        };
    }
    void Map(const std::string& caption, const std::string& field, const std::string& to) {
        Form().lvAccessMap.rows.push_back({caption, field, field + ",202", {to}});
    }
    void Export() {
        Form().cboAccessTable.SetText("Parts");
        Press("cmdGo");
    }
    Texts loginsSeen;
};

TEST_F(AccessTarget, IsReachedByTheDriversName) {
    EXPECT_EQ(AccessConnectionString("C:\\shop.mdb", ""), openString);
    EXPECT_EQ(
        AccessConnectionString("C:\\jobs;{old}\\shop.mdb", "a;b"),
        "Driver={Microsoft Access Driver (*.mdb)};Dbq={C:\\jobs;{old}}\\shop.mdb};Uid=Admin;Pwd={a;b};");
    EXPECT_EQ(AccessConnectionString("C:\\shop.mdb", "pw"),
              "Driver={Microsoft Access Driver (*.mdb)};Dbq=C:\\shop.mdb;Uid=Admin;Pwd=pw;");
}

TEST_F(AccessTarget, OffersItsTablesButForTheSystemsOwn) {
    target.tables = {"Zebra",       "MSysObjects", "msysAces", "Switchboard Items",
                     "SWITCHBOARD", "Switch",      "MSY",      "Parts"};
    Form().populateTableList();
    EXPECT_EQ(Form().cboAccessTable.Items(), (Texts{"(new)", "Zebra", "Switch", "MSY", "Parts"}));
    EXPECT_EQ(target.tableTypes, Texts{"TABLE"});
    EXPECT_EQ(target.cursorLocations, std::vector{CursorLocation::Client});
    EXPECT_EQ(target.connectionStrings, Texts{openString});
    EXPECT_EQ(target.openConnections, 0);
}

TEST_F(AccessTarget, IsChosenInAFileDialog) {
    Press("cmdBrowseAccess");
    EXPECT_TRUE(target.connectionStrings.empty());
    dialogs.chosenFile = "C:\\shop.mdb";
    Form().txtExportAccess.SetText("");
    Press("cmdBrowseAccess");
    EXPECT_EQ(Form().txtExportAccess.Text(), "C:\\shop.mdb");
    EXPECT_EQ(Form().cboAccessTable.Items(), (Texts{"(new)", "Parts"}));
    EXPECT_EQ(dialogs.fileRequests[1].title, "Export Data to Access");
    EXPECT_EQ(dialogs.fileRequests[1].filter, "Access Database (*.mdb)|*.mdb");
    EXPECT_FALSE(dialogs.fileRequests[1].saving);
}

TEST_F(AccessTarget, AsksForTheLoginUntilThePasswordIsRight) {
    Protect("secret");
    TypePasswords({"wrong", "secret"});
    Form().populateTableList();
    EXPECT_EQ(loginsSeen, (Texts{"Admin/", "Admin/wrong"}));
    EXPECT_EQ(target.connectionStrings, (Texts{openString, AccessConnectionString("C:\\shop.mdb", "wrong"),
                                               AccessConnectionString("C:\\shop.mdb", "secret")}));
    EXPECT_EQ(Form().cboAccessTable.Items(), (Texts{"(new)", "Parts"}));
    EXPECT_EQ(Form().login.DbPassword, "secret");
    EXPECT_EQ(Form().login.DbUser, "Admin");
    EXPECT_TRUE(dialogs.messages.empty());
    Choose(Form().cboAccessTable, "Parts");
    EXPECT_EQ(loginsSeen.size(), 2U) << "the login is held";
}

TEST_F(AccessTarget, IsLoggedInToAnewByTheNextDialog) {
    Protect("secret");
    TypePasswords({"secret"});
    Form().populateTableList();
    Form().Unload();
    Open().txtExportAccess.SetText("C:\\shop.mdb");
    EXPECT_FALSE(Form().connectFailed);
    Form().populateTableList();
    EXPECT_EQ(loginsSeen, (Texts{"Admin/", "Admin/"}));
    EXPECT_TRUE(Form().connectFailed) << "the user gave up";
    Form().Unload();
    Open();
    EXPECT_FALSE(Form().connectFailed);
}

TEST_F(AccessTarget, GivesUpWhenTheUserDoes) {
    Protect("secret");
    TypePasswords({"wrong"});
    Form().populateTableList();
    EXPECT_EQ(loginsSeen.size(), 2U);
    EXPECT_EQ(Messages(), Texts{invalidPassword});
    EXPECT_TRUE(Form().connectFailed);
    EXPECT_EQ(Form().cboAccessTable.Items(), Texts{"(new)"});
}

TEST_F(AccessTarget, AsksForALoginAtThatOneFailureOnly) {
    for (const char* text :
         {"Not a valid password.", "[Microsoft][ODBC Microsoft Access Driver] not a valid password.",
          "[unixODBC][Driver Manager]Data source name not found"}) {
        dialogs.messages.clear();
        target.onOpen = [text](const std::string&) { throw Failure(-1, "ODBC", text); };
        Form().populateTableList();
        EXPECT_EQ(Messages(), Texts{text});
        EXPECT_TRUE(Form().connectFailed);
    }
    EXPECT_TRUE(dialogs.shownForms.empty());
}

TEST_F(AccessTarget, IsOutOfReachWithoutAPortForIt) {
    ThePlatform().exportDatabases = nullptr;
    Form().populateTableList();
    EXPECT_EQ(Messages(), Texts{"This build can't reach other databases: it has no ODBC"});
}

TEST_F(AccessTarget, ShowsWhyItsTablesCantBeListed) {
    target.failOnTables = Failure(-1, "ODBC", "no schema");
    Form().populateTableList();
    EXPECT_EQ(Messages(), Texts{"no schema"});
    EXPECT_EQ(target.openConnections, 0);
}

TEST_F(AccessTarget, TellsTheFieldsOfTheChosenTable) {
    Form().populateTableList();
    Choose(Form().cboAccessTable, "Parts");
    std::string expected = FullSelect();
    expected.replace(expected.find("brenvik_data"), 12, "Parts");
    EXPECT_EQ(target.selected, Texts{expected});
    EXPECT_EQ(Form().cboAccessTableList.Items(), (Texts{"Number", "Name", "Size"}));
    EXPECT_EQ(Form().cboAccessFieldTypes.Items(), (Texts{"3", "202", "5"}));
    EXPECT_TRUE(Any("fraExistingAccess").visible);
    EXPECT_FALSE(Any("fraNewAccess").visible);
    EXPECT_EQ(target.openConnections, 0);
    Choose(Form().cboAccessTable, "(new)");
    EXPECT_FALSE(Any("fraExistingAccess").visible);
    EXPECT_TRUE(Any("fraNewAccess").visible);
}

TEST_F(AccessTarget, WithFewerColumnsIsTold) {
    target.onSelect = [](const std::string&) {
        throw Failure(-1, "ODBC", "Too few parameters. Expected 3.");
    };
    Form().populateTableList();
    Choose(Form().cboAccessTable, "Parts");
    EXPECT_EQ(Messages(), Texts{"Too few parameters. Expected 3."});
    EXPECT_TRUE(Form().cboAccessTableList.Items().empty());
}

TEST_F(AccessTarget, IsMappedRowByRow) {
    Form().populateTableList();
    Choose(Form().cboAccessTable, "Parts");
    Press("cmdAccessAdd");
    EXPECT_TRUE(Form().lvAccessMap.rows.empty());
    Choose(Form().cboAccessFrom, "Part Name");
    Choose(Form().cboAccessTableList, "Name");
    Press("cmdAccessAdd");
    Choose(Form().cboAccessFrom, "Thickness-Material (Metric)");
    Choose(Form().cboAccessTableList, "Size");
    Press("cmdAccessAdd");
    ASSERT_EQ(Form().lvAccessMap.rows.size(), 2U);
    EXPECT_EQ(Form().lvAccessMap.rows[0].text, "Part Name");
    EXPECT_EQ(Form().lvAccessMap.rows[0].subItems, Texts{"Name"});
    EXPECT_EQ(Form().lvAccessMap.rows[0].tag, "bv_partname,202");
    EXPECT_EQ(Form().lvAccessMap.rows[1].tag, "bv_thickness|bv_material,5");
    Press("cmdRemove");
    Form().lvAccessMap.selectedRow = 0;
    Press("cmdRemove");
    ASSERT_EQ(Form().lvAccessMap.rows.size(), 1U);
    EXPECT_EQ(Form().lvAccessMap.rows[0].text, "Thickness-Material (Metric)");
}

TEST_F(AccessTarget, TakesOneStatementForEachPart) {
    database.parts = {Board("Door", 24.5, 12, 0.75), Board("O'Neill", 30, 12, 2.675)};
    Map("Qty", "bv_qty", "Number");
    Map("Part Name", "bv_partname", "Name");
    Map("Length", "bv_length", "L");
    Map("Thickness-Material (Imperial)", "bv_thickness|bv_material", "TI");
    Map("Thickness-Material (Metric)", "bv_thickness|bv_material", "TM");
    Map("Notes", "bv_notes", "N");
    Export();
    EXPECT_EQ(
        target.executed,
        (Texts{"INSERT INTO Parts (Number,Name,L,TI,TM,N) VALUES('1','Door','24.5','3/4 Oak','0.75 Oak','')",
               "INSERT INTO Parts (Number,Name,L,TI,TM,N) VALUES('1','O'Neill','30','2 11/16 Oak','2.68 "
               "Oak','')"}));
    EXPECT_EQ(database.opened, Texts{TheSession().CurrentSQL});
    ExpectMessage("Export Complete!!!", "Done.", MessageIcon::Exclamation);
    EXPECT_FALSE(Form().Loaded());
    EXPECT_TRUE(Form().exportEnded);
    EXPECT_EQ(target.openConnections, 0);
    EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
    ExpectReaderClosed();
}

TEST_F(AccessTarget, IsWrittenUnderTheHourglass) {
    database.parts = {Board("Door", 1, 2, 3)};
    target.onExecute = [this](const std::string&) {
        EXPECT_EQ(Form().mousePointer, MousePointer::Hourglass);
    };
    Map("Part Name", "bv_partname", "Name");
    Export();
    EXPECT_EQ(target.executed.size(), 1U);
}

TEST_F(AccessTarget, ShowsTheFieldsOfTheTableChosenLast) {
    target.tables = {"Parts", "Other"};
    Form().populateTableList();
    Choose(Form().cboAccessTable, "Parts");
    target.fields = {{"Code", 202}};
    Choose(Form().cboAccessTable, "Other");
    EXPECT_EQ(Form().cboAccessTableList.Items(), Texts{"Code"});
    EXPECT_EQ(Form().cboAccessFieldTypes.Items(), Texts{"202"});
}

TEST_F(AccessTarget, ThatCantBeReachedShowsNoMapping) {
    Form().populateTableList();
    Choose(Form().cboAccessTable, "Parts");
    target.onOpen = [](const std::string&) { throw Failure(-1, "ODBC", "locked"); };
    Choose(Form().cboAccessTable, "Parts");
    EXPECT_EQ(Messages(), Texts{"locked"});
    EXPECT_FALSE(Any("fraExistingAccess").visible);
}

TEST_F(AccessTarget, TakesAdjustedSizesAndFractions) {
    database.parts = {Board("Door", 24.5, 12, 0.75)};
    UseAdjustments("[A]\nl=0.25\nw=1\nt=-1.25\n");
    Form().chkReduce.SetValue(1);
    for (const char* caption : {"Length", "Width", "Thickness", "Material"})
        Map(caption, "bv_" + FoldLower(caption), caption);
    Export();
    EXPECT_EQ(
        target.executed,
        Texts{"INSERT INTO Parts (Length,Width,Thickness,Material) VALUES('024 3/4','13','0- 5/10','Oak')"});
}

TEST_F(AccessTarget, TakesGroupedRows) {
    TheSession().GroupFields = "bv_partname";
    TheSession().CurrentSQL = "Select count";
    database.results["Select count"] = {{"bv_qty", "bv_partname"},
                                        {{{"bv_qty", 3.0}, {"bv_partname", "Door"}}}};
    Map("Qty", "bv_qty", "A");
    Map("Length", "bv_length", "B");
    Map("Notes", "bv_notes", "C");
    Map("Part Name", "bv_partname", "D");
    Export();
    EXPECT_EQ(target.executed, Texts{"INSERT INTO Parts (A,B,C,D) VALUES('3','Door')"});
}

TEST_F(AccessTarget, PassesOverARowThatIsRefused) {
    database.parts = {Board("Door", 1, 2, 3), Board("O'Neill", 1, 2, 3), Board("Top", 1, 2, 3)};
    target.onExecute = [](const std::string& statement) {
        if (statement.find("O'Neill") != std::string::npos) throw Failure(-1, "ODBC", "missing operator");
    };
    Map("Part Name", "bv_partname", "Name");
    Export();
    EXPECT_EQ(target.executed.size(), 3U);
    EXPECT_EQ(Messages(), (Texts{"missing operator", "Export Complete!!!"}));
}

TEST_F(AccessTarget, ThatGoesAwayInTheMiddleIsToldForEachRow) {
    database.parts = {Board("A", 1, 2, 3), Board("B", 1, 2, 3), Board("C", 1, 2, 3)};
    target.onExecute = [this](const std::string&) {
        if (target.executed.size() > 1) throw Failure(-2147467259, "ODBC", "Communication link failure");
    };
    Map("Part Name", "bv_partname", "Name");
    Export();
    EXPECT_EQ(Messages(),
              (Texts{"Communication link failure", "Communication link failure", "Export Complete!!!"}));
    EXPECT_FALSE(Form().Loaded());
}

TEST_F(AccessTarget, SaysDoneWhenTheListCantBeOpened) {
    database.refused = true;
    Map("Part Name", "bv_partname", "Name");
    Export();
    EXPECT_TRUE(target.executed.empty());
    EXPECT_EQ(Messages(), Texts{"Export Complete!!!"});
    const Texts troubles = TakeExportTroubles();
    ASSERT_EQ(troubles.size(), 1U);
    EXPECT_TRUE(troubles[0].starts_with(ListNotRead)) << troubles[0];
}

TEST_F(AccessTarget, TakesNothingWhenItCantBeReached) {
    target.onOpen = [](const std::string&) { throw Failure(-1, "ODBC", "locked"); };
    Map("Part Name", "bv_partname", "Name");
    Export();
    EXPECT_EQ(Messages(), Texts{"locked"});
    EXPECT_TRUE(Form().connectFailed);
    EXPECT_TRUE(Form().Loaded());
    EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
}

TEST_F(AccessTarget, TakesNothingWhenTheAdjustmentsWouldNeverEnd) {
    database.parts = {Board("A", 1, 2, 3)};
    UseAdjustments("[A]\n[B]\n[A]\n");
    Map("Part Name", "bv_partname", "Name");
    Export();
    EXPECT_TRUE(target.executed.empty());
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_NE(dialogs.messages[0].text.find("[A]"), std::string::npos);
    EXPECT_TRUE(Form().Loaded());
}

TEST_F(AccessTarget, NeedsAnAdjustmentFile) {
    files.contents.clear();
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "");
    Map("Part Name", "bv_partname", "Name");
    Export();
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_TRUE(dialogs.messages[0].text.ends_with("This export is now aborting."));
    EXPECT_TRUE(target.connectionStrings.empty());
}

class LoginDialog : public ExportTest {};

TEST_F(LoginDialog, NeedsBothBoxes) {
    auto& form = StateOf<frmLogin>();
    form.Load();
    EXPECT_EQ(form.caption, "Database Login");
    for (const auto& [user, password] : {std::pair{"", ""}, {"Admin", ""}, {"", "pw"}}) {
        form.txtUsername.SetText(user);
        form.txtPassword.SetText(password);
        form.Get<Control>("cmdLogin").Press();
        ExpectMessage("You must enter a username and password...", "Missing Values", MessageIcon::Stop);
        EXPECT_TRUE(form.Loaded());
        EXPECT_FALSE(form.entered);
    }
}

TEST_F(LoginDialog, LeftWithoutALoginGivesNone) {
    dialogs.onModal = [](brenvik::Form& form) { form.Get<Control>("cmdLogin").Press(); };
    EXPECT_FALSE(AskForLogin({"Somebody", ""}));
    dialogs.onModal = nullptr;
    EXPECT_FALSE(AskForLogin({"Somebody", "old"}));
    dialogs.onModal = [](brenvik::Form& form) { form.Get<Control>("cmdLogin").Press(); };
    EXPECT_EQ(AskForLogin({"Somebody", "old"})->DbPassword, "old");
}

class SqlServerFrame : public ExportTest {
  protected:
    SqlServerFrame() {
        Open();
        Any("txtSQLServer").SetText("shop");
        Any("txtSQLDatabase").SetText("jobs");
        Form().login = {"sa", "pw"};
    }
};

TEST_F(SqlServerFrame, IsNeverShown) {
    for (int type = 0; type < 14; ++type) {
        Form().cboExportType.SetListIndex(type);
        EXPECT_FALSE(Any("fraSQL").visible);
    }
}

TEST_F(SqlServerFrame, ChecksTheConnectionByOneField) {
    target.record = Part{{"news_desc", "hello"}};
    Press("cmdConnect");
    EXPECT_EQ(target.connectionStrings,
              Texts{"Driver={SQL Server}; Server=shop; Database=jobs; UID=sa; PWD=pw"});
    EXPECT_EQ(target.selected, Texts{"SELECT * FROM kids_news"});
    EXPECT_EQ(Messages(), Texts{"connection success"});
    EXPECT_EQ(target.openConnections, 0);
}

TEST_F(SqlServerFrame, TellsAFailedConnection) {
    Press("cmdConnect");
    EXPECT_EQ(Messages(), Texts{"failed connection"}) << "there is no record";
    target.onOpen = [](const std::string&) { throw Failure(-1, "ODBC", "no server"); };
    Press("cmdConnect");
    EXPECT_EQ(Messages().back(), "failed connection");
}

}  // namespace
}  // namespace brenvik
