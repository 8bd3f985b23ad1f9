// How journals are read: words, quotes, comments, the forms of steps, and what is told about a slip.
#include "journal/journal_parser.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "base/text.h"

namespace brenvik {
namespace {

std::vector<JournalStep> Parse(std::string_view text) { return ParseJournal(text, "a.journal"); }

std::string ErrorOf(std::string_view text) {
    try {
        Parse(text);
    } catch (const JournalSyntaxError& error) {
        return error.what();
    }
    return "no error";
}

TEST(JournalParser, TakesAStepPerLineAndTellsItsLine) {
    const auto steps = Parse("select all\n\n  command Show  \r\nclose");
    ASSERT_EQ(steps.size(), 3u);
    EXPECT_EQ(steps[0].kind, StepKind::SelectAll);
    EXPECT_EQ(steps[1].kind, StepKind::Command);
    EXPECT_EQ(steps[1].arguments, std::vector<std::string>{"Show"});
    EXPECT_EQ(steps[1].line, 3u);
    EXPECT_EQ(steps[1].source, "command Show");
    EXPECT_EQ(steps[2].kind, StepKind::Close);
}

TEST(JournalParser, AnEmptyJournalHasNoSteps) {
    EXPECT_TRUE(Parse("").empty());
    EXPECT_TRUE(Parse("\n# nothing but a remark\n   \n").empty());
}

TEST(JournalParser, PassesOverAByteOrderMark) { EXPECT_EQ(Parse("\xEF\xBB\xBFselect all").size(), 1u); }

TEST(JournalParser, CutsWordsAtBlanksAndTabs) {
    EXPECT_EQ(Parse("select\t1A \t 2b")[0].arguments, (std::vector<std::string>{"1A", "2b"}));
}

TEST(JournalParser, KeepsBlanksInQuotesAndReadsTheFourEscapes) {
    const auto steps = Parse(R"(expect message "a \"b\" \\ c\r\nd")");
    EXPECT_EQ(steps[0].arguments[0], "a \"b\" \\ c\r\nd");
}

TEST(JournalParser, TakesABackslashOutsideQuotesAsItStands) {
    EXPECT_EQ(Parse(R"(expect file c:\BV-DXF\a.dxf)")[0].arguments[0], R"(c:\BV-DXF\a.dxf)");
}

TEST(JournalParser, TakesAQuoteInsideAPlainWordAsItStands) {
    EXPECT_EQ(Parse("type Text1 3/4\"")[0].arguments[1], "3/4\"");
}

TEST(JournalParser, StartsACommentAtTheHeadOfAWord) {
    EXPECT_EQ(Parse("close # the form\n#3 steps above\n   # more").size(), 1u);
    EXPECT_EQ(Parse("press btn#1")[0].arguments[0], "btn#1");
}

TEST(JournalParser, TakesNumberSignAndDigitsAsAnIndex) {
    EXPECT_EQ(Parse("pick lstNames #12")[0].arguments, (std::vector<std::string>{"lstNames", "#12"}));
}

TEST(JournalParser, ReadsNonLatinText) {
    EXPECT_EQ(Parse("type txtName \"Türseite 側板\"")[0].arguments[1], "Türseite 側板");
}

TEST(JournalParser, ReadsBackEveryTextThatIsWrittenAsAWord) {
    for (const std::string text : {"", "cancel", "#2", "# no comment", "C:\\new\\table.dxf", "a \"b\" c",
                                   "two\r\nlines", "12\"", "Türseite", " ends blank "}) {
        const std::vector<JournalStep> steps = Parse("type txtName " + JournalText(text) + " # set");
        ASSERT_EQ(steps.size(), 1u) << text;
        EXPECT_EQ(steps[0].arguments[1], text);
    }
}

struct FormCase {
    const char* text;
    StepKind kind;
    std::vector<std::string> arguments;
};

TEST(JournalParser, TellsTheFormsOfStepsApart) {
    const FormCase cases[] = {
        {"select none", StepKind::SelectNone, {}},
        {"host \"zoom e \"", StepKind::HostText, {"zoom e "}},
        {"save out.dxf", StepKind::Save, {"out.dxf"}},
        {"close drawing", StepKind::CloseDrawing, {}},
        {"press Check1(3)", StepKind::Press, {"Check1(3)"}},
        {"goto fpSpread1 2 \"Part Name\"", StepKind::Goto, {"fpSpread1", "2", "Part Name"}},
        {"cell fpSpread1 1 ORIE LWT", StepKind::Cell, {"fpSpread1", "1", "ORIE", "LWT"}},
        {"width fpSpread1 \"Part Name\" 12.5", StepKind::Width, {"fpSpread1", "Part Name", "12.5"}},
        {"answer cancel", StepKind::Answer, {"cancel"}},
        {"point 1,2.5,-3", StepKind::AnswerPoint, {"1,2.5,-3"}},
        {"real -1e3", StepKind::AnswerReal, {"-1e3"}},
        {"keyword \"\"", StepKind::AnswerKeyword, {""}},
        {"file cancel", StepKind::CancelFile, {}},
        {"file \"cancel\"", StepKind::AnswerFile, {"cancel"}},
        {"point cancel", StepKind::CancelPoint, {}},
        {"real cancel", StepKind::CancelReal, {}},
        {"keyword cancel", StepKind::CancelKeyword, {}},
        {"keyword \"cancel\"", StepKind::AnswerKeyword, {"cancel"}},
        {"cancel work \"CNC run\" 3", StepKind::CancelWork, {"CNC run", "3"}},
        {"accept failure", StepKind::AcceptFailure, {}},
        {"unpick lstNames \"a b\"", StepKind::Unpick, {"lstNames", "a b"}},
        {"open \"my kitchen.dxf\"", StepKind::Open, {"my kitchen.dxf"}},
        {"escape", StepKind::Escape, {}},
        {"show entity 2F", StepKind::ShowEntity, {"2F"}},
        {"hide entity 2F", StepKind::HideEntity, {"2F"}},
        {"expect no message", StepKind::ExpectNoMessage, {}},
        {"expect refusal \"Unknown command.\"", StepKind::ExpectRefusal, {"Unknown command."}},
        {"expect no form", StepKind::ExpectNoForm, {}},
        {"expect no file x.csv", StepKind::ExpectNoFile, {"x.csv"}},
        {"expect file x.csv", StepKind::ExpectFile, {"x.csv"}},
        {"expect file x.csv line 2 \"a b\"", StepKind::ExpectFileLine, {"x.csv", "2", "a b"}},
        {"expect hidden btnOK", StepKind::ExpectHidden, {"btnOK"}},
        {"expect hidden entity 2F", StepKind::ExpectHiddenEntity, {"2F"}},
        {"expect hidden column fpSpread1 Price", StepKind::ExpectHiddenColumn, {"fpSpread1", "Price"}},
        {"expect visible entity 2F", StepKind::ExpectVisibleEntity, {"2F"}},
        {"expect items lst", StepKind::ExpectItems, {"lst"}},
        {"expect items lst a \"b c\" d", StepKind::ExpectItems, {"lst", "a", "b c", "d"}},
        {"expect cell g 0 1 Qty", StepKind::ExpectCell, {"g", "0", "1", "Qty"}},
        {"print lblPath", StepKind::PrintControl, {"lblPath"}},
        {"print grid fpSpread1", StepKind::PrintGrid, {"fpSpread1"}},
        {"print cell fpSpread1 1 2", StepKind::PrintCell, {"fpSpread1", "1", "2"}},
        {"print data 1F", StepKind::PrintData, {"1F"}},
        {"print session CurrentSQL", StepKind::PrintSession, {"CurrentSQL"}},
    };
    for (const FormCase& c : cases) {
        SCOPED_TRACE(c.text);
        const auto steps = Parse(c.text);
        ASSERT_EQ(steps.size(), 1u);
        EXPECT_EQ(steps[0].kind, c.kind);
        EXPECT_EQ(steps[0].arguments, c.arguments);
    }
}

TEST(JournalParser, EveryKindOfStepHasAForm) {
    std::set<StepKind> kinds;
    for (const StepForm& form : StepForms()) kinds.insert(form.kind);
    EXPECT_EQ(kinds.size(), static_cast<std::size_t>(StepKind::PrintControl) + 1);
}

TEST(JournalParser, EveryArgumentOfAFormHasAMeaning) {
    for (const StepForm& form : StepForms()) {
        for (const std::string& word : Split(form.pattern, ' ')) {
            if (word[0] >= 'a') continue;
            const std::string kind = SplitAtFirst(word, '.').head;
            EXPECT_NE(ArgumentMeaning(kind), kind) << form.pattern;
        }
    }
}

struct ErrorCase {
    const char* text;
    const char* message;
};

TEST(JournalParser, TellsPlaceExpectedAndFound) {
    const ErrorCase cases[] = {
        {"select all\njump high", "a.journal:2:1: expected a step, found \"jump\""},
        {"press", "a.journal:1:6: expected the name of a control, found the end of the line"},
        {"close now", "a.journal:1:7: expected drawing or the end of the line, found \"now\""},
        {"answer maybe", "a.journal:1:8: expected yes, no, ok or cancel, found \"maybe\""},
        {"real ten", "a.journal:1:6: expected a number or cancel, found \"ten\""},
        {"point 1;2", "a.journal:1:7: expected a point (X,Y or X,Y,Z) or cancel, found \"1;2\""},
        {"expect data XYZ ORIE LWT", "a.journal:1:13: expected a handle (hexadecimal), found \"XYZ\""},
        {"expect rows g -1", "a.journal:1:15: expected a whole number, found \"-1\""},
        {"select",
         "a.journal:1:7: expected all or none or a handle (hexadecimal), found the end of the line"},
        {"type t \"open", "a.journal:1:13: expected a closing quote, found the end of the line"},
        {"type t \"a\"b", "a.journal:1:11: expected a blank behind the closing quote, found \"b\""},
        {"type t \"a\\q\"", "a.journal:1:10: expected \\\", \\\\, \\r or \\n, found \\q"},
        {"type t \xFF", "a.journal:1:8: expected UTF-8 text, found the byte FF"},
        {"type Türe", "a.journal:1:10: expected a text, found the end of the line"},
        {"\"press\" btnOK", "a.journal:1:1: expected a step, found \"press\""},
        {"press \"\"", "a.journal:1:7: expected the name of a control, found \"\""},
    };
    for (const ErrorCase& c : cases) EXPECT_EQ(ErrorOf(c.text), c.message) << c.text;
    EXPECT_EQ(ErrorOf(std::string("type t a\0", 9)), "a.journal:1:9: expected UTF-8 text, found the byte 00");
}

TEST(JournalParser, AnyBytesGiveStepsOrAnErrorWithItsPlace) {
    std::mt19937 random(20260101);
    const std::string_view pieces[] = {"press",
                                       "expect",
                                       "cell",
                                       "file",
                                       "line",
                                       " ",
                                       "\"",
                                       "\\",
                                       "\n",
                                       "\r",
                                       "#",
                                       "#1",
                                       "select",
                                       "all",
                                       "1F",
                                       "ü",
                                       "\xFF",
                                       "\t",
                                       std::string_view("\0", 1)};
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (unsigned i = random() % 40; i > 0; --i) text += pieces[random() % std::size(pieces)];
        try {
            for (const JournalStep& step : Parse(text)) EXPECT_GE(step.line, 1u);
        } catch (const JournalSyntaxError& error) {
            EXPECT_GE(error.Line(), 1u);
            EXPECT_GE(error.Column(), 1u);
        }
    }
}

TEST(JournalPoint, TakesTwoOrThreeNumbers) {
    double p[3];
    ASSERT_TRUE(ParseJournalPoint("1,-2.5", p));
    EXPECT_EQ(p[1], -2.5);
    EXPECT_EQ(p[2], 0.0);
    ASSERT_TRUE(ParseJournalPoint("1,2,3e1", p));
    EXPECT_EQ(p[2], 30.0);
    for (const char* bad : {"", "1", "1,2,3,4", "1,,3", "a,b", "1,2,"})
        EXPECT_FALSE(ParseJournalPoint(bad, p)) << bad;
}

}  // namespace
}  // namespace brenvik
