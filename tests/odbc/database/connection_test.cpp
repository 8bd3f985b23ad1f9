// The life of a connection, and drivers that say no.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "driver_registry_fixture.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

class OdbcConnection : public OdbcTest {};

constexpr std::string_view lockedFile = "Driver={Test Driver (*.mdb)};Dbq=c:\\locked.mdb;Uid=Admin;Pwd=";

TEST_F(OdbcConnection, AWrongPasswordIsToldInTheDriversExactWords) {
    const auto connection = OdbcDatabase().CreateConnection();
    for (const char* password : {"", "wrong"}) {
        const Failure failure =
            FailureOf([&] { connection->Open(std::string(lockedFile) + password + ";"); });
        EXPECT_EQ(failure.description(), "[Microsoft][ODBC Microsoft Access Driver] Not a valid password.");
        EXPECT_EQ(failure.number(), -2147217843);
        EXPECT_EQ(failure.detail(), "SQLSTATE 28000");
        EXPECT_EQ(connection->State(), ConnectionState::Closed);
    }
    connection->Open(std::string(lockedFile) + "geheim;");
    EXPECT_EQ(connection->State(), ConnectionState::Open);
}

TEST_F(OdbcConnection, ADriverThatIsNotThereIsToldInTheManagersWords) {
    const auto connection = OdbcDatabase().CreateConnection();
    for (const char* name : {"Nobody's Driver", "Broken Driver"}) {
        const Failure failure =
            FailureOf([&] { connection->Open("Driver={" + std::string(name) + "};Pwd=geheim"); });
        EXPECT_TRUE(failure.description().starts_with("[unixODBC][Driver Manager]")) << failure.description();
        EXPECT_EQ(std::string(failure.what()).find("geheim"), std::string::npos);
        EXPECT_EQ(connection->State(), ConnectionState::Closed);
    }
}

TEST_F(OdbcConnection, StringsThatNameNoDriverFail) {
    const auto connection = OdbcDatabase().CreateConnection();
    for (const std::string& text : {std::string(), std::string("Dbq=c:\\a.mdb"), std::string(";;;"),
                                    std::string("Driver={never closed"), std::string(40000, 'x')}) {
        EXPECT_FALSE(FailureOf([&] { connection->Open(text); }).description().empty());
        EXPECT_EQ(connection->State(), ConnectionState::Closed);
    }
}

TEST_F(OdbcConnection, OpenAndClosedAreToldApart) {
    const auto connection = ConnectedToTestDriver();
    EXPECT_EQ(connection->State(), ConnectionState::Open);
    EXPECT_EQ(FailureOf([&] { connection->Open("Driver=x"); }).number(), 3705);
    connection->Close();
    EXPECT_EQ(connection->State(), ConnectionState::Closed);
    EXPECT_EQ(FailureOf([&] { connection->Close(); }).number(), 3704);
    EXPECT_EQ(FailureOf([&] { connection->Execute("UPDATE"); }).number(), 3704);
    EXPECT_EQ(FailureOf([&] { connection->OpenRecordset("SELECT types"); }).number(), 3704);
    EXPECT_EQ(FailureOf([&] { connection->TableNames("TABLE"); }).number(), 3704);
    connection->Open("Driver={Test Driver (*.mdb)};Dbq=c:\\again.mdb");
    connection->Execute("UPDATE");
}

TEST_F(OdbcConnection, ARecordSetOutlivesItsConnectionWithoutHarm) {
    auto connection = ConnectedToTestDriver();
    const auto closed = connection->OpenRecordset("SELECT types");
    connection->Close();
    EXPECT_EQ(FailureOf([&] { closed->Eof(); }).number(), 3704);
    EXPECT_EQ(FailureOf([&] { closed->MoveNext(); }).number(), 3704);
    EXPECT_EQ(FailureOf([&] { closed->Value("Text"); }).number(), 3704);
    EXPECT_EQ(closed->FieldName(0), "Text");
    connection = ConnectedToTestDriver();
    const auto dropped = connection->OpenRecordset("SELECT types");
    connection.reset();
    EXPECT_EQ(FailureOf([&] { dropped->MoveNext(); }).number(), 3704);
}

TEST_F(OdbcConnection, TheListOfTablesHoldsOnlyTheTypeAskedFor) {
    const auto connection = ConnectedToTestDriver();
    EXPECT_EQ(connection->TableNames("TABLE"), (std::vector<std::string>{"Zuschnitt", "Aufträge"}));
    EXPECT_EQ(connection->TableNames("SYSTEM TABLE"), (std::vector<std::string>{"MSysObjects"}));
}

TEST_F(OdbcConnection, FieldsOfEveryKindHaveTheirNumberAndValue) {
    struct Case {
        const char* name;
        int type;
        FieldValue value;
    };
    const Case cases[] = {
        {"Text", 202, "Türseite 木 😀"},
        {"Memo", 203, ""},
        {"Short", 2, -3.0},
        {"Byte", 17, 255.0},
        {"Price", 6, 12.5},
        {"Ratio", 131, 0.25},
        {"Cut", 11, -1.0},
        {"When", 135, "2005-03-01 12:30:00"},
        {"Id", 72, "6F9619FF-8B86-D011-B42D-00C04FC964FF"},
        {"Bytes", 205, "01AB"},
        {"Loose", 5, "oak"},
    };
    const auto connection = ConnectedToTestDriver();
    const auto records = connection->OpenRecordset("SELECT types");
    ASSERT_EQ(records->FieldCount(), static_cast<int>(std::size(cases)));
    for (int field = 0; const Case& each : cases) {
        EXPECT_EQ(records->FieldName(field), each.name);
        EXPECT_EQ(records->FieldType(field), each.type) << each.name;
        EXPECT_EQ(records->Value(each.name), each.value) << each.name;
        ++field;
    }
    // Fields that were read before can be asked for again.
    EXPECT_EQ(records->Value("TEXT"), FieldValue("Türseite 木 😀"));
    records->MoveNext();
    for (const Case& each : cases) EXPECT_EQ(records->Value(each.name), FieldValue()) << each.name;
}

TEST_F(OdbcConnection, LongTextsComeWhole) {
    const auto connection = ConnectedToTestDriver();
    const auto records = connection->OpenRecordset("SELECT long");
    std::string expected;
    for (int i = 0; i < 10000; ++i) expected += "x😀";
    EXPECT_EQ(std::get<std::string>(records->Value("Long")), expected);
}

TEST_F(OdbcConnection, ADatabaseThatGoesAwayBetweenRecordsEndsTheWalk) {
    const auto connection = ConnectedToTestDriver();
    const auto records = connection->OpenRecordset("SELECT fading");
    EXPECT_EQ(std::get<double>(records->Value("n")), 1);
    EXPECT_EQ(FailureOf([&] { records->MoveNext(); }).description(),
              "[Microsoft][ODBC Microsoft Access Driver] Disk or network error.");
    EXPECT_TRUE(records->Eof());
    EXPECT_EQ(FailureOf([&] { connection->Execute("GONE"); }).number(), -2147467259);
    connection->Close();
}

TEST_F(OdbcConnection, RefusalsOfAnyLengthAndOfNoneAreFailures) {
    const auto connection = ConnectedToTestDriver();
    std::string letters;
    for (int i = 0; i < 600; ++i) letters += "ü";
    EXPECT_EQ(FailureOf([&] { connection->Execute("WRONG"); }).description(),
              "[Microsoft][ODBC Microsoft Access Driver] " + letters + ".");
    EXPECT_EQ(FailureOf([&] { connection->Execute("DUPLICATE"); }).number(), -2147217873);
    EXPECT_EQ(FailureOf([&] { connection->Execute("SILENT"); }).description(),
              "The database driver failed and gave no reason");
}

}  // namespace
}  // namespace brenvik
