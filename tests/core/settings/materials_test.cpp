// The material library: reading by position, finding by key, and files that are not what they should be.
#include "settings/materials.h"
#include "settings/material_faults.h"

#include <gtest/gtest.h>

#include <map>

#include "core/fakes/fake_platform.h"
#include "core/settings/material_fixture.h"
#include "settings/material_faults.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

class Materials : public MaterialTest {};

TEST_F(Materials, LieInTheInstallFolder) {
    TheSession().InstallFolder = "C:\\Brenvik\\";
    EXPECT_EQ(MaterialsPath(), "C:\\Brenvik\\materials.txt");
    EXPECT_EQ(MaterialsBackupPath(), "C:\\Brenvik\\materials.bak");
    TheSession().InstallFolder = "C:\\Brenvik";
    EXPECT_EQ(MaterialsPath(), "C:\\Brenvik\\materials.txt");
}

TEST_F(Materials, FillAllFifteenFields) {
    UseLibrary(OakPly);
    EXPECT_TRUE(LookupMaterial("19.05 RED OAK PLY", record));
    EXPECT_EQ(record.material, "19.05 red oak ply");
    EXPECT_EQ(record.grain, 1);
    EXPECT_EQ(record.direction, "cC");
    EXPECT_EQ(record.tools[0], (MaterialTool{"T1", 12.7, "18000", "7500"}));
    EXPECT_EQ(record.tools[1], (MaterialTool{"2", 9.53, "17000", "6000"}));
    EXPECT_EQ(record.tools[2], (MaterialTool{"3", 6.35, "16000", "4000"}));
    EXPECT_TRUE(record.Found());
}

TEST_F(Materials, KeysCompareWithoutCase) {
    UseLibrary(OakPly);
    for (const char* key : {"19.05 red oak ply", "19.05 RED OAK PLY", "19.05 Red Oak Ply"}) {
        record = {};
        LookupMaterial(key, record);
        EXPECT_TRUE(record.Found()) << key;
    }
    for (const char* key : {"19.05 red oak", "19.05 red oak ply ", "19.050 red oak ply", "red oak ply", ""}) {
        record = {};
        LookupMaterial(key, record);
        EXPECT_FALSE(record.Found()) << key;
    }
}

TEST_F(Materials, ThicknessBelowOneMayHaveItsZero) {
    for (const char* stored : {".75 oak", "0.75 oak"})
        for (const char* asked : {".75 OAK", "0.75 OAK"}) {
            UseLibrary(Material(stored));
            EXPECT_TRUE(FindCheckedMaterial(asked).has_value()) << stored << " " << asked;
        }
    UseLibrary(Material("10.75 oak"));
    EXPECT_FALSE(FindCheckedMaterial("1.75 oak").has_value());
}

TEST_F(Materials, WithNoMatchTheRecordKeepsWhatItHeld) {
    UseLibrary(OakPly);
    LookupMaterial("19.05 red oak ply", record);
    const MaterialRecord held = record;
    EXPECT_FALSE(LookupMaterial("6 hdf", record));
    EXPECT_EQ(record, held);
    EXPECT_TRUE(record.Found()) << "a part after a found material passes the first test";
    record = {};
    EXPECT_FALSE(LookupMaterial("6 hdf", record));
    EXPECT_FALSE(record.Found()) << "cleared first, it doesn't";
}

TEST_F(Materials, WithoutAFirstToolCountAsNotFound) {
    UseLibrary(Replaced(OakPly, "tool1=T1", "tool1="));
    LookupMaterial("19.05 red oak ply", record);
    EXPECT_EQ(record.grain, 1);
    EXPECT_FALSE(record.Found());
}

TEST_F(Materials, OfSeveralWithOneKeyTheLastRules) {
    UseLibrary(OakPly + Replaced(OakPly, "12.7", "8"));
    LookupMaterial("19.05 red oak ply", record);
    EXPECT_EQ(record.tools[0].diameter, 8);
}

TEST_F(Materials, ValuesStandAtFixedPositionsWhateverTheKeySays) {
    UseLibrary(
        "MATERIAL:18 mdf\nXXXXXX1\n1234567890c\n123456T9\n123456789.5\n12345678S\n12345678F\n"
        "tool2=\ntool2dia= \ntool2ss=\ntool2fs=\ntool3\nt\n\n\n");
    LookupMaterial("18 mdf", record);
    EXPECT_EQ(record.grain, 1);
    EXPECT_EQ(record.direction, "c");
    EXPECT_EQ(record.tools[0], (MaterialTool{"T9", 0.5, "S", "F"}));
    EXPECT_EQ(record.tools[1], MaterialTool());
    EXPECT_EQ(record.tools[2], MaterialTool());
}

TEST_F(Materials, NumbersAreLenient) {
    UseLibrary(Replaced(Replaced(OakPly, "12.7", "12.7 mm"), "grain=1", "grain=yes"));
    LookupMaterial("19.05 red oak ply", record);
    EXPECT_EQ(record.tools[0].diameter, 12.7);
    EXPECT_EQ(record.grain, 0);
}

TEST_F(Materials, GrainBeyondAnIntegerNamesTheMaterial) {
    UseLibrary(Replaced(OakPly, "grain=1", "grain=99999999999"));
    const MaterialRecord before = record;
    const Failure failure = FailureOf([&] { LookupMaterial("19.05 red oak ply", record); });
    EXPECT_EQ(failure.number(), failure_number::Overflow);
    EXPECT_EQ(failure.detail(), "the grain flag of the material \"19.05 Red Oak Ply\" is 99999999999");
    EXPECT_EQ(record, before);
}

TEST_F(Materials, AMissingFileIsAFailureOfTheOpen) {
    const Failure failure = FailureOf([&] { LookupMaterial("18 mdf", record); });
    EXPECT_EQ(failure.number(), failure_number::FileNotFound);
    EXPECT_EQ(failure.detail(), "C:\\Brenvik\\materials.txt");
}

TEST_F(Materials, LinesMayEndInAnyWayAndTheLastInNone) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        std::string content = Material("6 hdf", lineEnd) + Material("18 mdf", lineEnd);
        for (int cut = 0; cut < 2; ++cut) {
            UseLibrary(content);
            record = {};
            LookupMaterial("18 mdf", record);
            EXPECT_EQ(record.tools[2].feedSpeed, "4000");
            const MaterialLibrary library = ReadMaterials();
            EXPECT_EQ(library.lineEnd, lineEnd);
            EXPECT_EQ(library.materials.size(), 2u);
            EXPECT_TRUE(library.damages.empty());
            while (content.ends_with('\n') || content.ends_with('\r')) content.pop_back();
        }
    }
}

TEST_F(Materials, AByteOrderMarkAndBlankLinesBetweenDoNoHarm) {
    UseLibrary("\xEF\xBB\xBF" + Material("6 hdf") + "\n  \n" + Material("18 mdf") + "\n");
    EXPECT_TRUE(FindCheckedMaterial("6 hdf").has_value());
    EXPECT_TRUE(FindCheckedMaterial("18 mdf").has_value());
    EXPECT_TRUE(ReadMaterials().damages.empty());
}

TEST_F(Materials, OfAnotherCodePageAreFoundAllTheSame) {
    UseLibrary(Material("19 T\xDCR \x96 wei\xDF"));
    const std::optional<CheckedMaterial> found = FindCheckedMaterial("19 Tür – weiß");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->texts.front(), "19 TÜR – weiß");
    UseLibrary(Material("19 tür – weiß"));
    EXPECT_TRUE(FindCheckedMaterial("19 TÜR – WEIß").has_value());
}

TEST_F(Materials, InSixteenBitCharactersAreRefused) {
    UseLibrary(std::string("\xFF\xFEm\0a\0t\0", 8));
    for (const auto& read : {+[] { ReadMaterials(); }, +[] { FindCheckedMaterial("18 mdf"); }}) {
        const Failure failure = FailureOf(read);
        EXPECT_EQ(failure.number(), 321);
        EXPECT_EQ(failure.detail(),
                  "C:\\Brenvik\\materials.txt: expected plain text in UTF-8 or the Western code page, found "
                  "UTF-16");
    }
}

TEST_F(Materials, WithAZeroByteAreRefusedWithItsLine) {
    UseLibrary(Material("18 mdf") + "name=19 o" + std::string(1, '\0') + "ak\r\n");
    const Failure failure = FailureOf([] { ReadMaterials(); });
    EXPECT_EQ(failure.number(), 321);
    EXPECT_EQ(failure.detail(),
              "C:\\Brenvik\\materials.txt, line 16: expected plain text in UTF-8 or the Western "
              "code page, found the byte 00");
}

TEST_F(Materials, AShortRecordIsNeverFilledFromTheNextOne) {
    const std::string cut = OakPly.substr(0, OakPly.find("tool3="));
    for (const std::string& content : {cut, cut + Material("6 hdf")}) {
        UseLibrary(Material("18 mdf") + content);
        const MaterialRecord before = record;
        const Failure failure = FailureOf([&] { LookupMaterial("19.05 red oak ply", record); });
        EXPECT_EQ(failure.number(), failure_number::InputPastEnd);
        EXPECT_EQ(
            failure.detail(),
            "C:\\Brenvik\\materials.txt:16: the material \"19.05 Red Oak Ply\" has 11 lines, expected 15");
        EXPECT_EQ(record, before);
        EXPECT_TRUE(FindCheckedMaterial("18 mdf").has_value());
    }
    EXPECT_TRUE(FindCheckedMaterial("6 hdf").has_value()) << "the material behind it is whole";
}

std::string DamagesOf(std::string_view content) {
    std::string text;
    for (const MaterialDamage& damage : ParseMaterials(content).damages)
        text += std::to_string(damage.line) + ": " + damage.text + "\n";
    return text;
}

TEST_F(Materials, DamagesAreToldWithTheirPlaces) {
    EXPECT_EQ(DamagesOf(OakPly), "");
    EXPECT_EQ(DamagesOf(""), "");
    EXPECT_EQ(DamagesOf(Replaced(OakPly, "grain=", "Grain=")), "") << "keys are read without case";
    EXPECT_EQ(DamagesOf(Material("6 hdf") + Replaced(OakPly, "tool2dia=9.53\n", "")),
              "24: expected \"tool2dia=\", found \"tool2ss=17000\"\n");
    EXPECT_EQ(DamagesOf(Replaced(OakPly, "grain=1\ndirection=cC\n", "direction=cC\ngrain=1\n")),
              "2: expected \"grain=\", found \"direction=cC\"\n");
    EXPECT_EQ(DamagesOf("# our boards\n# of 2006\n" + OakPly + "tool4=9\n"),
              "1: expected \"material=\", found \"# our boards\"\n"
              "18: expected \"material=\", found \"tool4=9\"\n");
    EXPECT_EQ(DamagesOf("material=18 mdf\ngrain=0"), "1: the material \"18 mdf\" has 2 lines, expected 15\n");
    EXPECT_EQ(DamagesOf("material18"), "1: expected \"material=\", found \"material18\"\n");
}

struct ValueCase {
    const char *good, *bad, *told;
    bool unusable;
};

TEST_F(Materials, TellsValuesThatAMaterialCannotHave) {
    const std::string name = " of the material \"19.05 Red Oak Ply\" is ";
    const std::string diameter =
        ", expected the diameter of the bit, a number above 0 and below 1000 (millimetres or inches)";
    const std::string speed = ", expected a number above 0";
    const ValueCase cases[] = {
        {"tool1dia=12.7", "tool1dia=abc", "5: tool1dia", true},
        {"tool1dia=12.7", "tool1dia=12,7", "5: tool1dia", true},
        {"tool1dia=12.7", "tool1dia=-12", "5: tool1dia", true},
        {"tool1dia=12.7", "tool1dia=0", "5: tool1dia", true},
        {"tool1dia=12.7", "tool1dia=", "5: tool1dia", true},
        {"tool1dia=12.7", "tool1dia=1e9", "5: tool1dia", true},
        {"tool3dia=6.35", "tool3dia=1/4", "13: tool3dia", true},
        {"tool1=T1", "tool1= ", "4: tool1", true},
        {"tool1=T1", "tool1=0", "4: tool1", false},
        {"tool1=T1", "tool1=00", "4: tool1", false},
        {"tool1dia=12.7", "tool1dia=1000", "5: tool1dia", true},
        {"tool2=2", "tool2=+2", "8: tool2", false},
        {"tool2=2", "tool2=-2", "8: tool2", false},
        {"tool2=2", "tool2=2e0", "8: tool2", false},
        {"tool2=2", "tool2=\xEF\xBC\x92", "8: tool2", false},
        {"tool2=2", "tool2=\xEF\xBC\x90", "8: tool2", true},
        {"direction=cC", "direction=zz", "3: direction", true},
        {"direction=cC", "direction=", "3: direction", true},
        {"grain=1", "grain=yes", "2: grain", true},
        {"grain=1", "grain=0.5", "2: grain", true},
        {"grain=1", "grain=99999999999", "2: grain", true},
        {"tool1ss=18000", "tool1ss=fast", "6: tool1ss", false},
        {"tool1fs=7500", "tool1fs=", "7: tool1fs", false},
        {"tool2=2", "tool2=", "8: tool2", false},
        {"tool2=2", "tool2=00", "8: tool2", true},
        {"tool2=2", "tool2=2 ", "8: tool2", false},
        {"tool1=T1", "tool1= T1", "4: tool1", false},
        {"tool1ss=18000", "tool1ss=18000 ", "6: tool1ss", false},
        {"tool2ss=17000", "tool2sp=17000", "10: the material", false},
        {"tool2ss=17000", "tool2speed=17000", "10: the material", true},
    };
    for (const ValueCase& c : cases) {
        UseLibrary(Replaced(OakPly, c.good, c.bad));
        const std::vector<MaterialFault> faults = FindCheckedMaterial("19.05 red oak ply")->faults;
        ASSERT_EQ(faults.size(), 1U) << c.bad;
        EXPECT_EQ(faults[0].unusable, c.unusable) << c.bad;
        EXPECT_TRUE((std::to_string(faults[0].line) + ": " + faults[0].text).starts_with(c.told)) << c.bad;
    }
    UseLibrary(Replaced(OakPly, "tool1dia=12.7", "tool1dia=abc"));
    EXPECT_EQ(FindCheckedMaterial("19.05 red oak ply")->faults[0].text,
              "tool1dia" + name + "\"abc\"" + diameter);
    EXPECT_EQ(MaterialFaultText({5, "wrong", true}), "C:\\Brenvik\\materials.txt:5: wrong");
}

TEST_F(Materials, ATwiceNumberedToolIsToldHoweverItsNumberIsSpelled) {
    const auto toldOfTools = [this](const std::string& tool2, const std::string& diameter) {
        UseLibrary(Replaced(Replaced(Replaced(OakPly, "tool1=T1", "tool1=1"), "tool2=2", "tool2=" + tool2),
                            "tool2dia=9.53", "tool2dia=" + diameter));
        const std::vector<MaterialFault> faults = FindCheckedMaterial("19.05 red oak ply")->faults;
        std::string told;
        for (const MaterialFault& fault : faults)
            told += std::to_string(fault.line) + ": " + fault.text + "\n";
        return told;
    };
    for (const std::string spelled : {"01", "0001", "+1", "1e0", "1.0", "\xEF\xBC\x91", "0\xEF\xBC\x91"}) {
        EXPECT_NE(
            toldOfTools(spelled, "8")
                .find("8: tool2 of the material \"19.05 Red Oak Ply\" is \"" + spelled +
                      "\", the same tool as \"1\" of tool1, with the diameter 8 in place of 12.7, expected a "
                      "number of its own\n"),
            std::string::npos)
            << spelled;
    }
    EXPECT_EQ(toldOfTools("01", "12.7"), "");
    EXPECT_EQ(toldOfTools("01", "12.70"), "");
    EXPECT_EQ(toldOfTools("10", "8"), "");
    EXPECT_EQ(toldOfTools("1000000000000000000001", "8"), "");
    EXPECT_EQ(toldOfTools("1e0", "12.7"),
              "8: tool2 of the material \"19.05 Red Oak Ply\" is \"1e0\", expected the number of a tool in "
              "plain digits\n");
    UseLibrary(Replaced(OakPly, "tool2=2", "tool2=t1"));
    EXPECT_EQ(FindCheckedMaterial("19.05 red oak ply")->faults.size(), 1U) << "t1 and T1";
}

TEST_F(Materials, ExpectsNothingOfAnEmptySlot) {
    UseLibrary(Replaced(Replaced(OakPly, "tool3=3", "tool3=0"), "tool3dia=6.35", "tool3dia="));
    EXPECT_TRUE(FindCheckedMaterial("19.05 red oak ply")->faults.empty());
    EXPECT_FALSE(FindCheckedMaterial("6 hdf")) << "there is no such material";
}

TEST_F(Materials, TellsKeysThatStandTwiceOrThatNoPartCanHave) {
    UseLibrary(OakPly + Replaced(OakPly, "12.7", "8") + Material("3/4 oak"));
    EXPECT_EQ(FindCheckedMaterial("19.05 red oak ply")->faults.at(0).text,
              "the material \"19.05 Red Oak Ply\" stands in line 1 already; the last one counts");
    const std::vector<MaterialFault> faults = ReadMaterials().faults;
    ASSERT_EQ(faults.size(), 2U);
    EXPECT_EQ(faults[0].line, 16U);
    EXPECT_EQ(faults[1].line, 31U);
    EXPECT_TRUE(faults[1].text.starts_with("the material \"3/4 oak\": expected ")) << faults[1].text;
}

TEST_F(Materials, AnyCutOfTheFileIsReadWithoutHarm) {
    const std::string whole = Material("6 hdf") + OakPly;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const MaterialLibrary library = ParseMaterials(whole.substr(0, length));
        EXPECT_LE(library.materials.size(), 2u);
        UseLibrary(whole.substr(0, length));
        try {
            LookupMaterial("19.05 red oak ply", record);
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number(), failure_number::InputPastEnd) << length;
        }
    }
}

TEST_F(Materials, AreWrittenWithTheirFifteenKeysInOrder) {
    const MaterialLibrary library = ParseMaterials(OakPly);
    EXPECT_EQ(MaterialsText(library.materials, "\n"), OakPly);
    EXPECT_EQ(MaterialsText(library.materials, "\r\n").substr(0, 40),
              "material=19.05 Red Oak Ply\r\ngrain=1\r\ndir");
    EXPECT_EQ(MaterialsText({}, "\n"), "");
}

TEST_F(Materials, SavingKeepsTheOldFileBesideTheNew) {
    UseLibrary("old");
    SaveMaterials(ParseMaterials(OakPly).materials, "\n");
    EXPECT_EQ(Library(), OakPly);
    EXPECT_EQ(Backup(), "old");
}

struct KeyCase {
    double thickness;
    double scale;
    const char* key;
};

TEST_F(Materials, KeyIsTheRoundedThicknessAndTheName) {
    const KeyCase cases[] = {
        {19.05, 2, "19.05 RED OAK PLY"},
        {19.05, 3, "19.05 RED OAK PLY"},
        {18.0000001, 2, "18 RED OAK PLY"},
        {18.125, 3, "18.12 RED OAK PLY"},
        {18.375, 2, "18.38 RED OAK PLY"},
        {0.75, 1, ".75 RED OAK PLY"},
        {0.703125, 1, ".70312 RED OAK PLY"},
        {0.734375, 4, ".73438 RED OAK PLY"},
        {1.5, 4, "1.5 RED OAK PLY"},
        {0.734375, 2, ".73 RED OAK PLY"},
        {0, 2, "0 RED OAK PLY"},
        {0.734375, 0, ".73438 RED OAK PLY"},
    };
    for (const KeyCase& c : cases)
        EXPECT_EQ(MaterialKey(c.thickness, "Red oak ply", c.scale), c.key) << c.thickness << " " << c.scale;
    EXPECT_EQ(MaterialKey(19, "tür", 2), "19 TÜR");
    EXPECT_EQ(MaterialKey(19, "", 2), "19 ");
}

TEST_F(Materials, AnUnknownOneIsTold) {
    EXPECT_EQ(UnknownMaterialText("19 OAK"),
              "You do not have the material 19 OAK in the material database, so this part export will be "
              "skipped.");
}

TEST_F(Materials, NameForTheListIsConvertedWhereTheShopWantsIt) {
    const std::pair<double, const char*> cases[] = {
        {19.05, "3/4 OAK"}, {12.7, "1/2 OAK"}, {25.4, "1 OAK"}, {38.1, "1 1/2 OAK"},
        {18, "23/32 OAK"},  {19, "3/4 OAK"},   {6, "1/4 OAK"},
    };
    system.settings.Set("ConvertMaterialName", "1");
    for (const auto& [thickness, name] : cases) EXPECT_EQ(MaterialNameForList(thickness, "OAK"), name);
    for (const char* off : {"0", "", "2", "yes"}) {
        system.settings.Set("ConvertMaterialName", off);
        EXPECT_EQ(MaterialNameForList(19.05, "OAK"), "OAK") << off;
    }
}

}  // namespace
}  // namespace brenvik
