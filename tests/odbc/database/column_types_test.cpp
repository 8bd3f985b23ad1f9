// Type numbers, numbers of failures, and texts for the driver manager.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "odbc/failures.h"
#include "odbc/field_types.h"
#include "odbc/wide_text.h"

namespace brenvik::odbc {
namespace {

TEST(ColumnTypes, HaveTheNumbersOfAdo) {
    struct Case {
        ColumnType column;
        int number;
    };
    const Case cases[] = {
        {{SQL_CHAR}, 129},
        {{SQL_VARCHAR}, 200},
        {{SQL_LONGVARCHAR}, 201},
        {{SQL_WCHAR}, 130},
        {{SQL_WVARCHAR}, 202},
        {{SQL_WLONGVARCHAR}, 203},
        {{SQL_NUMERIC}, 131},
        {{SQL_DECIMAL}, 131},
        {{SQL_NUMERIC, false, true}, 6},
        {{SQL_INTEGER, false, true}, 3},
        {{SQL_BIT}, 11},
        {{SQL_TINYINT}, 16},
        {{SQL_TINYINT, true}, 17},
        {{SQL_SMALLINT}, 2},
        {{SQL_SMALLINT, true}, 18},
        {{SQL_INTEGER}, 3},
        {{SQL_INTEGER, true}, 19},
        {{SQL_BIGINT}, 20},
        {{SQL_BIGINT, true}, 21},
        {{SQL_REAL}, 4},
        {{SQL_FLOAT}, 5},
        {{SQL_DOUBLE}, 5},
        {{SQL_BINARY}, 128},
        {{SQL_VARBINARY}, 204},
        {{SQL_LONGVARBINARY}, 205},
        {{SQL_TYPE_DATE}, 133},
        {{SQL_TYPE_TIME}, 134},
        {{SQL_TYPE_TIMESTAMP}, 135},
        {{SQL_DATE}, 133},
        {{SQL_TIMESTAMP}, 135},
        {{SQL_GUID}, 72},
        {{SQL_INTERVAL_DAY}, 202},
        {{-999}, 202},
    };
    for (const Case& each : cases) EXPECT_EQ(AdoTypeNumber(each.column), each.number) << each.column.type;
}

TEST(Diagnostics, HaveTheNumbersOfAdo) {
    struct Case {
        const char* state;
        long number;
    };
    const Case cases[] = {{"28000", -2147217843}, {"42S02", -2147217865}, {"22018", -2147217913},
                          {"23000", -2147217873}, {"23505", -2147217873}, {"42000", -2147217900},
                          {"42S22", -2147217900}, {"HY000", -2147467259}, {"08S01", -2147467259},
                          {"", -2147467259}};
    for (const Case& each : cases) EXPECT_EQ(NumberOfState(each.state), each.number) << each.state;
}

TEST(WideText, GoesThereAndBackUnchanged) {
    for (const std::string text : {"", "plain", "Türseite", "木工", "a😀b", "\xEF\xBF\xBF"})
        EXPECT_EQ(FromWide(ToWide(text)), text);
    EXPECT_EQ(ToWide("😀"), (std::vector<SQLWCHAR>{0xD83D, 0xDE00}));
}

TEST(WideText, DamagedTextBecomesCharacters) {
    EXPECT_EQ(FromWide(ToWide("T\xFCr")), "Tür");
    EXPECT_EQ(FromWide(std::vector<SQLWCHAR>{'a', 0xD83D}), "a\xEF\xBF\xBD");
    EXPECT_EQ(FromWide(std::vector<SQLWCHAR>{0xDE00, 0xD83D, 'b'}),
              "\xEF\xBF\xBD\xEF\xBF\xBD"
              "b");
}

}  // namespace
}  // namespace brenvik::odbc
