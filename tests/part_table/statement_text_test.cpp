// How statements are put into the engine's words, and which ones are refused before they reach it.
#include "part_table/statement_text.h"

#include <gtest/gtest.h>

#include "part_table/failures.h"
#include "table_fixture.h"

namespace brenvik::part_table {
namespace {

struct Rewriting {
    const char* given;
    const char* expected;

    friend void PrintTo(const Rewriting& each, std::ostream* out) {
        *out << testing::PrintToString(each.given);
    }
};

class StatementRewriting : public testing::TestWithParam<Rewriting> {};

TEST_P(StatementRewriting, ChangesOnlyWhatTheEnginesDifferIn) {
    EXPECT_EQ(TranslateStatement(GetParam().given, false).text, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StatementRewriting,
    testing::Values(
        Rewriting{"select 1=1", "select 1=1"},
        Rewriting{"delete from brenvik_data", "delete from brenvik_data"},
        Rewriting{"select * from t where (isnull(a)  or  a = '')",
                  "select * from t where (((a) is null)  or  a = '')"},
        Rewriting{"select * from t where IsNull ( a )", "select * from t where (( a ) is null)"},
        Rewriting{"select * from t where isnull(isnull(a))",
                  "select * from t where ((((a) is null)) is null)"},
        Rewriting{"select * from t where isnull((a)) and b", "select * from t where (((a)) is null) and b"},
        Rewriting{"select 'isnull(a)' from t", "select 'isnull(a)' from t"},
        Rewriting{"select 'it''s isnull(a)' from t", "select 'it''s isnull(a)' from t"},
        Rewriting{"select a from t where a isnull", "select a from t where a isnull"},
        Rewriting{"select [isnull](a) from t", "select [isnull](a) from t"},
        Rewriting{"select visnull(a) from t", "select visnull(a) from t"},
        Rewriting{"select isnull(')') from t", "select ((')') is null) from t"},
        Rewriting{"select 5--3", "select 5- -3"}, Rewriting{"select '--' from t", "select '--' from t"},
        Rewriting{"select a from t where a > 5d2", "select a from t where a > 5e2"},
        Rewriting{"select 1D-3,.5d+2,5e2", "select 1e-3,.5e+2,5e2"},
        Rewriting{"select 5day, d5, '5d2'", "select 5day, d5, '5d2'"},
        Rewriting{"insert into t values (-1.5,-2)", "insert into t values (-1.5,-2)"},
        Rewriting{"select 'T\xC3\xBCr'", "select 'T\xC3\xBCr'"}, Rewriting{"select '\"'", "select '\"'"}));

struct Refusal {
    const char* name;
    std::string given;
    const char* reason;

    friend void PrintTo(const Refusal& each, std::ostream* out) { *out << each.name; }
};

class StatementRefusal : public testing::TestWithParam<Refusal> {};

TEST_P(StatementRefusal, TellsWhatWasWrong) {
    const Failure failure = FailureOf([] { TranslateStatement(GetParam().given, true); });
    EXPECT_EQ(failure.number(), failure_number::StatementRefused);
    EXPECT_EQ(failure.source(), "Brenvik part table");
    EXPECT_EQ(failure.description(), GetParam().reason);
    EXPECT_EQ(failure.detail(), GetParam().given);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StatementRefusal,
    testing::Values(
        Refusal{"DoubleQuotes", "select \"bv_id\" from brenvik_data",
                "Syntax error: a text in double quotes stands at character 8; single quotes were expected"},
        Refusal{"Remark", "select /* x */ 1", "Syntax error: a remark begins at character 8"},
        Refusal{"Zero", std::string("select '\0'", 10),
                "Syntax error: a zero character stands at character 9"},
        Refusal{"Blank", "  ", "Syntax error: the statement is blank"},
        Refusal{"Pragma", "pragma user_version",
                "Syntax error: the statement begins with \"pragma\" where select, insert, update, delete, "
                "create, "
                "drop or alter was expected"}),
    [](const testing::TestParamInfo<Refusal>& tested) { return tested.param.name; });

struct Select {
    const char* sql;
    bool plain;

    friend void PrintTo(const Select& each, std::ostream* out) { *out << testing::PrintToString(each.sql); }
};

class PlainSelect : public testing::TestWithParam<Select> {};

TEST_P(PlainSelect, IsTheOneWhoseRecordsAreTableRows) {
    EXPECT_EQ(TranslateStatement(GetParam().sql, true).selectsTableRows, GetParam().plain) << GetParam().sql;
}

INSTANTIATE_TEST_SUITE_P(
    Table, PlainSelect,
    testing::Values(
        Select{"SELECT * FROM brenvik_data", true}, Select{"select bv_id, bv_x from Brenvik_Data", true},
        Select{"select bv_id from brenvik_data Where bv_material = 'Oak' order by bv_x Asc", true},
        Select{"select [bv_id] from [brenvik_data] order by 1", true},
        Select{"select bv_partname from brenvik_data where bv_notes = 'group'", true},
        Select{"select distinct bv_id from brenvik_data", false},
        Select{"Select count(bv_partname) as bv_qty, bv_partname from brenvik_data  Group by bv_partname",
               false},
        Select{"select bv_partname from brenvik_data where 1=1 group by bv_partname", false},
        Select{"select bv_id from brenvik_data union select bv_id from brenvik_data", false},
        Select{"select bv_id from brenvik_data, other", false}, Select{"select bv_id from other", false},
        Select{"select bv_x as total from brenvik_data", false}, Select{"select 1=1", false},
        Select{"select bv_id", false}, Select{"select", false}, Select{"delete from brenvik_data", false}));

TEST(PlainSelectText, HasTheRowNumberBehindTheFields) {
    EXPECT_EQ(TranslateStatement("select bv_id from brenvik_data where isnull(bv_pn)", true).text,
              "select bv_id , rowid from brenvik_data where ((bv_pn) is null)");
}

}  // namespace
}  // namespace brenvik::part_table
