// UCS, -LAYER, variables, -VIEW, ZOOM and REGEN.
#include "command_fixture.h"

namespace brenvik {
namespace {

struct UcsCase {
    const char* text;
    Point3 origin, xAxis, yAxis;

    friend void PrintTo(const UcsCase& each, std::ostream* out) { *out << testing::PrintToString(each.text); }
};

class UcsAnswers : public CommandTest, public ::testing::WithParamInterface<UcsCase> {};

TEST_P(UcsAnswers, SetTheUserSystem) {
    Type(GetParam().text);
    ExpectIdle();
    const auto ucs = document.ActiveUCS();
    ExpectExact(ucs[0], GetParam().origin);
    ExpectExact(ucs[1], GetParam().xAxis);
    ExpectExact(ucs[2], GetParam().yAxis);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, UcsAnswers,
    ::testing::Values(
        UcsCase{"_ucs\rw\r", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs o 1,2,3 ", {1, 2, 3}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs n 1,2,3 ", {1, 2, 3}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs m 1,2,3 ucs m 1,1,1 ", {2, 3, 4}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs x 90 ", {0, 0, 0}, {1, 0, 0}, {0, 0, 1}},
        UcsCase{"ucs x  ", {0, 0, 0}, {1, 0, 0}, {0, 0, 1}},
        UcsCase{"ucs y 90 ", {0, 0, 0}, {0, 0, -1}, {0, 1, 0}},
        UcsCase{"ucs z 90 ", {0, 0, 0}, {0, 1, 0}, {-1, 0, 0}},
        UcsCase{"ucs n z -90 ", {0, 0, 0}, {0, -1, 0}, {1, 0, 0}},
        UcsCase{"ucs z 90 ucs x 90 ", {0, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        UcsCase{"ucs 3 5,0,0 5,9,0 0,0,0 ", {5, 0, 0}, {0, 1, 0}, {-1, 0, 0}},
        UcsCase{"ucs 3point 5,0,0   ", {5, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs za 1,1,1 9,1,1 ", {1, 1, 1}, {0, 1, 0}, {0, 0, 1}},
        UcsCase{"ucs g f ", {0, 0, 0}, {1, 0, 0}, {0, 0, 1}},
        UcsCase{"ucs g  ", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs o 1,2,3 ucs x 90 ucs p ucs p ", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs o 1,2,3 ucs x 90 ucs prev ", {1, 2, 3}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs o 1,2,3 ucs s Bank ucs w ucs r bank ", {1, 2, 3}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs o 1,2,3 ucs s Bank ucs d bank ucs w ucs r bank ", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucsortho 0 -v f ucs v ", {0, 0, 0}, {1, 0, 0}, {0, 0, 1}},
        UcsCase{"ucsortho 0 -v f _ucs _v ucs p ", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"-v right ", {0, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        UcsCase{"ucsortho 0 -v right ", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"-v swiso ", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        UcsCase{"ucs 3 0,0,0 1,0,0 2,0,0 ", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));

TEST_F(CommandTest, NamedUserSystemsAreKeptOncePerName) {
    Type("ucs o 1,2,3 ucs s Bank ucs o 1,0,0 ucs s BANK ");
    ASSERT_EQ(document.NamedUcs().size(), 1u);
    ExpectExact(document.NamedUcs()[0].origin, {2, 2, 3});
    Type("ucs s a*b ");
    EXPECT_EQ(document.NamedUcs().size(), 1u);
}

TEST_F(CommandTest, UnknownNamesAndMissingHistoryAreTold) {
    Type("ucs r Nowhere ucs p ucs ? ");
    EXPECT_TRUE(Told("No UCS is named \"Nowhere\"."));
    EXPECT_TRUE(Told("There is no earlier UCS."));
    ExpectIdle();
}

using Layers = CommandTest;

TEST_F(Layers, AreMadeChosenAndColoured) {
    Type("-layer m Cases c red Cases n A,B s A c 30 B \r");
    ExpectIdle();
    EXPECT_EQ(document.CurrentLayer().Name(), "A");
    EXPECT_EQ(document.LayerTable().Find("cases")->Color(), 1);
    EXPECT_EQ(document.LayerTable().Find("B")->Color(), 30);
}

TEST_F(Layers, AreSwitchedByNamesAndPatterns) {
    Type("-layer n bv-section1,bv-section2,Cases \r");
    Type("-layer\rf\rbv-section*\r\r");
    EXPECT_TRUE(document.LayerTable().Find("bv-section1")->Freeze());
    EXPECT_TRUE(document.LayerTable().Find("bv-section2")->Freeze());
    EXPECT_FALSE(document.LayerTable().Find("Cases")->Freeze());
    Type("-layer\rt\rbv-section*\r\r");
    EXPECT_FALSE(document.LayerTable().Find("bv-section1")->Freeze());
    Type("-la lo Cases,bv-section2 off Cases \r");
    EXPECT_TRUE(document.LayerTable().Find("Cases")->Lock());
    EXPECT_TRUE(document.LayerTable().Find("bv-section2")->Lock());
    EXPECT_FALSE(document.LayerTable().Find("Cases")->LayerOn());
    Type("-la u * on * \r");
    EXPECT_FALSE(document.LayerTable().Find("Cases")->Lock());
    EXPECT_TRUE(document.LayerTable().Find("Cases")->LayerOn());
}

TEST_F(Layers, FreezingWithNoMatchChangesNothing) {
    Type("-layer\rf\rbv-section*\r\r");
    ExpectIdle();
    EXPECT_TRUE(Told("No layer matches \"bv-section*\"."));
}

TEST_F(Layers, TheCurrentOneIsNotFrozenAndTurnedOffOnRequestOnly) {
    Type("-layer n A f * off 0 n off 0 y \r");
    ExpectIdle();
    EXPECT_FALSE(document.LayerTable().Find("0")->Freeze());
    EXPECT_TRUE(document.LayerTable().Find("A")->Freeze());
    EXPECT_FALSE(document.LayerTable().Find("0")->LayerOn());
}

TEST_F(Layers, WrongNamesAndColorsAreTold) {
    Type("-layer s Nowhere n a|b c 300 c blue Nowhere lt Dashed \r");
    ExpectIdle();
    EXPECT_TRUE(Told("The drawing has no layer \"Nowhere\"."));
    EXPECT_TRUE(Told("\"300\" is no color"));
    EXPECT_TRUE(Told("The drawing has no linetype \"Dashed\"."));
    EXPECT_EQ(document.LayerTable().All().size(), 1u);
}

using Variables = CommandTest;

TEST_F(Variables, AreSetByTheirNames) {
    for (const char* text :
         {"plinetype\r2\r", "ucsfollow\r0\r", "ucsortho\r0\r", "isavebak\r0\r", "OSNAPCOORD\r1\r"}) {
        Type(text);
        ExpectIdle();
    }
    EXPECT_TRUE(Told("Enter new value for ISAVEBAK <1>: 0"));
    EXPECT_TRUE(Told("Enter new value for OSNAPCOORD <2>: 1"));
    Type("osnapcoord  ");
    EXPECT_TRUE(Told("Enter new value for OSNAPCOORD <1>:"));
}

TEST_F(Variables, WrongValuesAreToldAndAskedAgain) {
    Type("osnapcoord 5 two 1.5 1 ");
    ExpectIdle();
    EXPECT_TRUE(Told("\"5\" is no value of OSNAPCOORD: a whole number from 0 to 2 is expected."));
    EXPECT_EQ(commandLine.ProfileVariables().at("OSNAPCOORD"), "1");
}

TEST_F(Variables, OfTheDrawingAreKeptWithIt) {
    Type("setvar ltscale 2.5 insbase 1,2,3 ");
    EXPECT_EQ(document.Tables().headerVariables.at("$LTSCALE"),
              (std::vector<std::pair<int, std::string>>{{40, "2.5"}}));
    EXPECT_EQ(document.Tables().headerVariables.at("$INSBASE"),
              (std::vector<std::pair<int, std::string>>{{10, "1"}, {20, "2"}, {30, "3"}}));
    Type("ltscale  ");
    EXPECT_TRUE(Told("Enter new value for LTSCALE <2.5>:"));
}

TEST_F(Variables, TheSpaceAndTheLayerAreVariablesToo) {
    Type("tilemode 0 ");
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::PaperSpace);
    Type("tilemode 1 -layer n Cases \rclayer Cases ");
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::ModelSpace);
    EXPECT_EQ(document.CurrentLayer().Name(), "Cases");
    Type("clayer Nowhere  dwgname setvar nothing ");
    ExpectIdle();
    EXPECT_TRUE(Told("Unknown variable \"NOTHING\"."));
}

using Groups = CommandTest;

TEST_F(Groups, AreCreatedAddedToAndExploded) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    BoxAt({5, 0, 0}, {6, 1, 1});
    Type("-group c Bank 0,0,0  -group a bank all  ");
    ASSERT_NE(document.GroupTable().Find("Bank"), nullptr);
    EXPECT_EQ(document.GroupTable().Find("Bank")->Count(), 2);
    Type("-group\re\rBank\r");
    EXPECT_EQ(document.GroupTable().Find("Bank"), nullptr);
    EXPECT_EQ(Entities().size(), 2u);
    ExpectIdle();
}

TEST_F(Groups, ABlankBelongsToTheNameOfAKnownGroup) {
    document.Groups().Add("BASE 1");
    document.Groups().Add("TALL");
    Type("-group\re\rBASE 1\r");
    EXPECT_EQ(document.GroupTable().Find("BASE 1"), nullptr);
    Type("-group e tall ");
    EXPECT_EQ(document.GroupTable().Find("TALL"), nullptr);
    ExpectIdle();
}

TEST_F(Groups, WrongNamesAreTold) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    Type("-group e Nowhere -group c a|b -group c Bank  -group c Bank l  -group c Bank ");
    ExpectIdle();
    EXPECT_TRUE(Told("The drawing has no group \"Nowhere\"."));
    EXPECT_TRUE(Told("A group needs objects."));
    EXPECT_TRUE(Told("The drawing has a group \"Bank\" already."));
    EXPECT_EQ(document.GroupTable().All().size(), 1u);
}

TEST_F(Variables, SnapAndOrthoAreSwitchedByCommandsOfTheirOwn) {
    Type("snap\ron\r");
    EXPECT_EQ(commandLine.ProfileVariables().at("SNAPMODE"), "1");
    Type("snap\roff\r");
    EXPECT_EQ(commandLine.ProfileVariables().at("SNAPMODE"), "0");
    Type("snap 12.5 ortho on snap -1 ");
    EXPECT_EQ(commandLine.ProfileVariables().at("SNAPMODE"), "1");
    EXPECT_EQ(document.Tables().headerVariables.at("$ORTHOMODE").front().second, "1");
    Type("snapunit  ");
    EXPECT_TRUE(Told("Enter new value for SNAPUNIT <12.5>:"));
}

TEST_F(CommandTest, ZoomAndRegenTakeTheirAnswers) {
    for (const char* text : {"zoom e ", "z a ", "zoom w 0,0 10,10 ", "zoom 2x ", "zoom c 0,0 100 ",
                             "zoom 0,0 5,5 ", "zoom s 0.5xp ", "zoom p ", "zoom  ", "regen ", "-view o f "}) {
        Type(text);
        ExpectIdle();
    }
}

}  // namespace
}  // namespace brenvik
