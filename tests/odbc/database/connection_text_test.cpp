// Connection strings: what is found in them, and what is changed for a driver.
#include "odbc/connection_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace brenvik::odbc {
namespace {

std::string Shouted(std::string_view path) { return "</" + std::string(path) + ">"; }

TEST(ConnectionText, AttributesAreFoundWithoutRegardToCase) {
    struct Case {
        std::string_view text, name, value;
    };
    const Case cases[] = {
        {"Driver={Microsoft Access Driver (*.mdb)};Dbq=c:\\a.mdb;", "driver",
         "Microsoft Access Driver (*.mdb)"},
        {"Driver={SQL Server}; Server=box; Database=jobs; UID=sa; PWD=", "Server", "box"},
        {"Driver={a;b}}c};Dbq=x", "DRIVER", "a;b}c"},
        {"Driver={a;b}}c};Dbq=x", "dbq", "x"},
        {"DSN=shop", "Driver", ""},
        {"first=1;first=2", "First", "1"},
        {"nonsense;Driver= SQLite ", "Driver", "SQLite"},
        {"Driver={never closed;Dbq=x", "Dbq", ""},
        {"Driver=", "Driver", ""},
        {"", "Driver", ""},
    };
    for (const Case& each : cases) EXPECT_EQ(AttributeValue(each.text, each.name), each.value) << each.text;
}

TEST(ConnectionText, OnlyThePlaceOfTheFileIsChanged) {
    struct Case {
        std::string_view text, result;
    };
    const Case cases[] = {
        {"Driver={Microsoft Access Driver (*.mdb)};Dbq=c:\\my jobs\\a.mdb;Uid=Admin;Pwd=;",
         "Driver={Microsoft Access Driver (*.mdb)};Dbq=</c:\\my jobs\\a.mdb>;Uid=Admin;Pwd=;"},
        {"Driver={SQL Server}; Server=box; Database=jobs; UID=sa; PWD=x y",
         "Driver={SQL Server}; Server=box; Database=jobs; UID=sa; PWD=x y"},
        {"DBQ = a ;b=c", "DBQ=</a>;b=c"},
        {"Dbq={c:\\a;b.mdb}", "Dbq={</c:\\a;b.mdb>}"},
        {"Dbq=;Uid=Admin", "Dbq=;Uid=Admin"},
        {"Pwd={;Dbq=x};", "Pwd={;Dbq=x};"},
        {"no attribute at all", "no attribute at all"},
        {"", ""},
    };
    for (const Case& each : cases) EXPECT_EQ(ForDriver(each.text, {}, Shouted), each.result);
}

TEST(ConnectionText, ADriverMayWantTheFileUnderAnotherNameAndFurtherAttributes) {
    const DriverEntry driver{"Database", "NoCreat=1;Timeout=2000"};
    EXPECT_EQ(ForDriver("Driver={D};Dbq=a;Uid=Admin;Pwd=;", driver, Shouted),
              "Driver={D};Database=</a>;Uid=Admin;Pwd=;NoCreat=1;Timeout=2000");
    EXPECT_EQ(ForDriver("Driver={D};Pwd=x", driver, Shouted), "Driver={D};Pwd=x;NoCreat=1;Timeout=2000");
}

TEST(ConnectionText, APlaceThatWouldBeCutStandsInBraces) {
    const auto place = [](std::string_view) { return std::string("/shop/a;b}/c.mdb"); };
    EXPECT_EQ(ForDriver("Dbq=c.mdb;Uid=Admin", {}, place), "Dbq={/shop/a;b}}/c.mdb};Uid=Admin");
}

}  // namespace
}  // namespace brenvik::odbc
