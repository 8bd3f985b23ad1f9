// The test driver's answers.
#include "test_driver_script.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace test_driver {
namespace {

Result Types() {
    return {{
                {u"Text", SQL_WVARCHAR, false, false, {u"Türseite 木 😀", std::nullopt}},
                {u"Memo", SQL_WLONGVARCHAR, false, false, {u"", std::nullopt}},
                {u"Short", SQL_SMALLINT, false, false, {u"-3", std::nullopt}},
                {u"Byte", SQL_TINYINT, false, true, {u"255", std::nullopt}},
                {u"Price", SQL_NUMERIC, true, false, {u"12.5", std::nullopt}},
                {u"Ratio", SQL_NUMERIC, false, false, {u"0.25", std::nullopt}},
                {u"Cut", SQL_BIT, false, false, {u"1", std::nullopt}},
                {u"When", SQL_TYPE_TIMESTAMP, false, false, {u"2005-03-01 12:30:00", std::nullopt}},
                {u"Id", SQL_GUID, false, false, {u"6F9619FF-8B86-D011-B42D-00C04FC964FF", std::nullopt}},
                {u"Bytes", SQL_LONGVARBINARY, false, false, {u"\x01\xAB", std::nullopt}},
                {u"Loose", SQL_DOUBLE, false, false, {u"oak", std::nullopt}},
            },
            std::nullopt};
}

Result LongText() {
    // Every second character is a pair of units, so that some piece ends in the middle of one.
    std::u16string text;
    for (int i = 0; i < 10000; ++i) text += u"x😀";
    return {{{u"Long", SQL_WLONGVARCHAR, false, false, {text}}}, std::nullopt};
}

}  // namespace

std::vector<Diagnostic> RefusalOf(std::u16string_view connectionString) {
    const bool locked = connectionString.find(u"locked") != std::u16string_view::npos;
    if (!locked || connectionString.find(u";Pwd=geheim;") != std::u16string_view::npos) return {};
    return {{u"28000", u"[Microsoft][ODBC Microsoft Access Driver] Not a valid password."},
            {u"01000", u"[Microsoft][ODBC Microsoft Access Driver] The driver goes on to say more."}};
}

std::optional<Result> ResultOf(std::u16string_view sql) {
    if (sql == u"SELECT types") return Types();
    if (sql == u"SELECT long") return LongText();
    if (sql == u"SELECT fading") return Result{{{u"n", SQL_INTEGER, false, false, {u"1", u"2", u"3"}}}, 1};
    if (sql == u"UPDATE") return Result{};
    return std::nullopt;
}

std::vector<Diagnostic> StatementRefusal(std::u16string_view sql) {
    if (sql == u"SILENT") return {};
    if (sql == u"DUPLICATE")
        return {{u"23000", u"[Microsoft][ODBC Microsoft Access Driver] Duplicate value."}};
    if (sql == u"GONE") return {Gone()};
    return {{u"42000", u"[Microsoft][ODBC Microsoft Access Driver] " + std::u16string(600, u'ü') + u"."}};
}

Result Tables() {
    const std::optional<std::u16string> none;
    return {
        {{u"TABLE_CAT", SQL_WVARCHAR, false, false, {none, none, none, none}},
         {u"TABLE_SCHEM", SQL_WVARCHAR, false, false, {none, none, none, none}},
         {u"TABLE_NAME", SQL_WVARCHAR, false, false, {u"Zuschnitt", u"MSysObjects", u"Ansicht", u"Aufträge"}},
         {u"TABLE_TYPE", SQL_WVARCHAR, false, false, {u"TABLE", u"SYSTEM TABLE", u"VIEW", u"TABLE"}},
         {u"REMARKS", SQL_WVARCHAR, false, false, {none, none, none, none}}},
        std::nullopt};
}

Diagnostic Gone() { return {u"08S01", u"[Microsoft][ODBC Microsoft Access Driver] Disk or network error."}; }

}  // namespace test_driver
