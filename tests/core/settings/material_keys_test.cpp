// Keys that can be, keys that are near, and records that join the library.
#include "settings/material_keys.h"

#include <gtest/gtest.h>

#include "core/settings/material_fixture.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

class MaterialKeys : public MaterialTest {
  protected:
    Texts Near(const std::string& key, std::size_t count = 9) {
        return NearMaterials(ReadMaterials(), key, count);
    }
};

TEST_F(MaterialKeys, AreAThicknessABlankAndAName) {
    for (const char* key : {"18 oak", "19.05 Red Oak Ply", ".75 oak", "0.75 oak", "18 Spanplatte weiß",
                            "18 a=b, \"c\"", "18 3/4\" Oak", "18 18 oak", "18 Jack's oak"})
        EXPECT_EQ(MaterialKeyFault(key), "") << key;
    for (const char* key :
         {"", "oak", "oak 18", "18", "18 ", " 18 oak", "0 oak", "-18 oak", "18mm oak", "18\toak"})
        EXPECT_TRUE(MaterialKeyFault(key).starts_with("a thickness, a blank and a name, such as")) << key;
}

TEST_F(MaterialKeys, ThatAreAddedHaveNoQuotesThatListsCannotTake) {
    EXPECT_EQ(NewMaterialKeyFault("18 oak"), "");
    EXPECT_EQ(NewMaterialKeyFault("18 Jack's oak"),
              "a thickness, a blank and a name without single quotes, since no list takes a part with one");
    EXPECT_EQ(NewMaterialKeyFault("oak"), MaterialKeyFault("oak"));
}

TEST_F(MaterialKeys, HaveNoBlanksThatAPartCouldNotHave) {
    for (const char* key : {"18  oak", "18 oak "})
        EXPECT_TRUE(MaterialKeyFault(key).ends_with("with no other blanks before or behind the name")) << key;
}

TEST_F(MaterialKeys, WriteTheThicknessAsRunsDo) {
    EXPECT_EQ(MaterialKeyFault("18.0 oak"), "the thickness as runs write it: \"18 oak\"");
    EXPECT_EQ(MaterialKeyFault("00.75 oak"), "the thickness as runs write it: \".75 oak\"");
    EXPECT_EQ(MaterialKeyFault("1e1 oak"), "the thickness as runs write it: \"10 oak\"");
    EXPECT_EQ(MaterialKeyFault("19.0500001 oak"), "the thickness as runs write it: \"19.05 oak\"");
}

TEST_F(MaterialKeys, AreOneLineOfText) {
    for (const char* key :
         {"18 oak\nmaterial=19 oak", "18 oak\r", "18 o\x01k", "18 o\x7Fk", "18 \xFFoak", "18 o\xC2\x85k"})
        EXPECT_TRUE(MaterialKeyFault(key).ends_with("in UTF-8 and without control characters")) << key;
    EXPECT_EQ(MaterialKeyFault("18 " + std::string(252, 'o')), "");
    EXPECT_NE(MaterialKeyFault("18 " + std::string(253, 'o')), "");
}

TEST_F(MaterialKeys, OfOneMaterialAreFoundWithoutCaseAndTheLastRules) {
    UseLibrary(Material("18 Oak") + Replaced(Material("18 OAK"), "tool1=T1", "tool1=T9"));
    const MaterialLibrary library = ReadMaterials();
    ASSERT_NE(FindMaterialIn(library, "18 oak"), nullptr);
    EXPECT_EQ((*FindMaterialIn(library, "18 oak"))[3], "T9");
    EXPECT_EQ(FindMaterialIn(library, "19 oak"), nullptr);
}

TEST_F(MaterialKeys, NearOnesHaveTheSameNameThenASimilarOneThenTheNearestThickness) {
    UseLibrary(Material("12 Mdf") + Material("18 White Melamine") + Material("15 Birch Ply") +
               Material("25 Birch Ply") + Material("8 Birch Plywood"));
    EXPECT_EQ(Near("16 BIRCH PLY"),
              (Texts{"15 Birch Ply", "25 Birch Ply", "8 Birch Plywood", "18 White Melamine", "12 Mdf"}));
    EXPECT_EQ(Near("18 White Melamin", 1), Texts{"18 White Melamine"});
    EXPECT_EQ(Near("13 Oak", 2), (Texts{"12 Mdf", "15 Birch Ply"}));
}

TEST_F(MaterialKeys, NearOnesHaveAFirstToolAndComeOnce) {
    UseLibrary(Replaced(Material("18 Oak"), "tool1=T1", "tool1=") + Material("19 Oak") + Material("19 Oak"));
    EXPECT_EQ(Near("18 oak"), Texts{"19 Oak"});
    UseLibrary("");
    EXPECT_EQ(Near("18 oak"), Texts{});
}

class AppendingMaterials : public MaterialKeys {
  protected:
    void Append(const std::string& like, const std::string& key) {
        MaterialTexts texts = FindCheckedMaterial(like)->texts;
        texts.front() = key;
        AppendMaterial(texts);
    }
};

TEST_F(AppendingMaterials, PutsTheRecordBehindTheOthersAndKeepsTheFileAsItWas) {
    for (const char* lineEnd : {"\n", "\r\n"}) {
        const std::string before = Material("18 Oak", lineEnd);
        UseLibrary(before);
        Append("18 oak", "19 Eiche weiß");
        EXPECT_EQ(Library(), before + Material("19 Eiche weiß", lineEnd));
        EXPECT_EQ(Backup(), before);
    }
}

TEST_F(AppendingMaterials, LeavesOddBytesAndAMissingLineEndToTheOthers) {
    // A note of the shop, and a name in the Western code page.
    const std::string before = "our boards\n" + Material("18 T\xFCr");
    UseLibrary(before.substr(0, before.size() - 1));
    Append("18 tür", "19 Oak");
    EXPECT_EQ(Library(), before + Material("19 Oak"));
}

TEST_F(AppendingMaterials, IsFoundAtOnce) {
    UseLibrary(OakPly);
    Append("19.05 red oak ply", "16 Oak");
    const std::optional<CheckedMaterial> added = FindCheckedMaterial("16 OAK");
    ASSERT_TRUE(added);
    EXPECT_EQ(added->texts[4], "12.7");
}

}  // namespace
}  // namespace brenvik
