// Drawings whose solids stand in blocks: each reference's solids are parts, or are told with their count.
#include <algorithm>

#include "program.h"

namespace brenvik::cli_test {
namespace {

std::size_t LinesOf(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

class Blocks : public ProgramTest {
  protected:
    /// The sample with its first solid, the left side, in a block "Side", which a block "Pair" shows twice.
    static std::string Drawing(const std::string& references) {
        std::string text = ReadFile(ShippedSample());
        std::erase(text, '\r');
        const std::string begin = "  0\n3DSOLID\n";
        const std::size_t first = text.find(begin), second = text.find(begin, first + 1);
        std::string solid = text.substr(first, second - first);
        text.erase(first, second - first);
        // A solid in a block names no space as its owner.
        const std::size_t owner = solid.find("330\n");
        solid.erase(owner, solid.find('\n', owner + 4) + 1 - owner);
        text.insert(first, references);
        const std::string blocks =
            Block("Side", solid) + Block("Pair", Reference("Side", "") + Reference("Side", "", 1000));
        text.insert(text.find("  0\nENDSEC", text.find("\nBLOCKS\n")), blocks);
        return text;
    }
    static std::string Block(const std::string& name, const std::string& content) {
        return "  0\nBLOCK\n  8\n0\n  2\n" + name + "\n 70\n0\n 10\n0.0\n 20\n0.0\n 30\n0.0\n" + content +
               "  0\nENDBLK\n  8\n0\n";
    }
    /// At `x` along the world's X, with these further groups.
    static std::string Reference(const std::string& name, const std::string& groups, int x = 0) {
        return "  0\nINSERT\n  8\n0\n  2\n" + name + "\n 10\n" + std::to_string(x) +
               ".0\n 20\n0.0\n 30\n0.0\n" + groups;
    }
    /// Rows of the list whose name is that of the solid in the block: quantity, name and all up to the
    /// letters.
    std::vector<std::string> Sides(const std::string& list) const {
        std::vector<std::string> rows;
        for (std::size_t at = 0; at < list.size();) {
            const std::size_t end = std::min(list.find('\n', at), list.size());
            const std::string row = list.substr(at, end - at);
            if (row.find("Left Side") != std::string::npos)
                rows.push_back(row.substr(row.find(','), row.find(",LWT,") - row.find(',')));
            at = end + 1;
        }
        return rows;
    }
    Outcome ListOf(const std::string& references) {
        Write("job.dxf", Drawing(references));
        return Run({"list", "job.dxf", "--format", "csv"});
    }
};

TEST_F(Blocks, EachSolidOfAReferenceIsAPartWithItsDataAndSizes) {
    const std::vector<std::string> whole =
        Sides(Run({"list", ShippedSample().string(), "--format", "csv"}).output);
    ASSERT_EQ(whole.size(), 1u);
    const Outcome once = ListOf(Reference("Side", ""));
    EXPECT_EQ(once.status, 0) << once.errors;
    EXPECT_EQ(Sides(once.output), whole);
    EXPECT_EQ(once.errors,
              "job.dxf: 1 solid in a reference to block \"Side\" is a part of its own here, which "
              "can't be written back into the drawing\n");
    // Turned, mirrored, nested and in rows: five at other places, the sizes the same.
    const Outcome many = ListOf(Reference("Side", " 50\n37.0\n", 500) + Reference("Pair", " 41\n-1.0\n") +
                                Reference("Side", " 70\n2\n 44\n900.0\n"));
    EXPECT_EQ(many.status, 0) << many.errors;
    EXPECT_EQ(Sides(many.output), std::vector<std::string>(5, whole.front()));
    EXPECT_NE(many.errors.find("3 solids in references to block \"Side\" are parts"), std::string::npos);
    EXPECT_NE(many.errors.find("2 solids in references to block \"Pair\" are parts"), std::string::npos);
    EXPECT_EQ(LinesOf(many.errors), 2u) << many.errors;
}

TEST_F(Blocks, AReferenceOfUnevenScaleIsToldWithTheCountOfItsSolids) {
    const Outcome outcome = ListOf(Reference("Pair", " 41\n2.0\n") + Reference("Side", ""));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Sides(outcome.output).size(), 1u);
    EXPECT_NE(outcome.errors.find("2 solids in references to block \"Pair\" are left out: "),
              std::string::npos)
        << outcome.errors;
    EXPECT_NE(outcome.errors.find("1 solid in a reference to block \"Side\" is a part"), std::string::npos)
        << outcome.errors;
}

TEST_F(Blocks, SolidsOfAReferenceOfEvenScaleKeepTheirLettersForTheirSizes) {
    const Outcome half = ListOf(Reference("Side", " 41\n0.5\n 42\n0.5\n 43\n0.5\n"));
    EXPECT_EQ(half.status, 0) << half.errors;
    EXPECT_NE(half.output.find(",360,280,9,LWT,"), std::string::npos) << half.output;
}

TEST_F(Blocks, ScalesThatDifferByRoundingAloneAreOneScale) {
    const Outcome outcome = ListOf(Reference("Side", " 41\n1.0000001\n 42\n1.0\n 43\n1.0\n") +
                                   Reference("Pair", " 41\n0.333333\n 42\n0.3333333\n 43\n-0.3333333\n"));
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(Sides(outcome.output).size(), 3u) << outcome.output;
    EXPECT_NE(outcome.output.find(",720,560,18,LWT,"), std::string::npos) << outcome.output;
    const Outcome uneven = ListOf(Reference("Side", " 41\n1.00001\n 42\n1.0\n 43\n1.0\n"));
    EXPECT_EQ(uneven.status, 1);
    EXPECT_TRUE(Sides(uneven.output).empty()) << uneven.output;
}

TEST_F(Blocks, AReferenceBeyondAllMeasureIsToldByItsHandle) {
    for (const std::string groups : {" 41\n1e-11\n 42\n1e-11\n 43\n1e-11\n", " 10\n1e308\n"}) {
        const Outcome outcome = ListOf(Reference("Side", "  5\nFACE\n" + groups));
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(Sides(outcome.output).empty()) << outcome.output;
        EXPECT_NE(outcome.errors.find("1 solid in a reference to block \"Side\" is left out: "),
                  std::string::npos)
            << outcome.errors;
        EXPECT_NE(outcome.errors.find("(reference FACE)"), std::string::npos) << outcome.errors;
    }
}

TEST_F(Blocks, ACountOrANormalThatAReferenceCannotHaveIsTold) {
    for (const std::string groups : {" 70\n0\n", " 71\n-2\n", "210\n0.0\n220\n0.0\n230\n0.0\n"}) {
        const Outcome outcome = ListOf(Reference("Side", groups));
        EXPECT_EQ(outcome.status, 1) << groups;
        EXPECT_EQ(Sides(outcome.output).size(), 1u) << outcome.output;
        EXPECT_NE(outcome.errors.find("job.dxf:"), std::string::npos) << outcome.errors;
        EXPECT_NE(outcome.errors.find(" was expected"), std::string::npos) << outcome.errors;
    }
}

TEST_F(Blocks, OfARunByWayOfTheGridTellAMirroredPartFromItsOriginal) {
    const auto run = [this](const std::string& second) {
        Write("job.dxf",
              Drawing(Reference("Side", "  5\nFA\n") + Reference("Side", "  5\nFB\n" + second, 2000)));
        return Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cnc", "--from-grid", "--select", "FA,FB"});
    };
    const std::string differ = "differ from it; expected a part number (PN) of its own";
    EXPECT_EQ(run(" 50\n37.0\n").status, 0);
    const Outcome mirrored = run(" 41\n-1.0\n");
    EXPECT_EQ(mirrored.status, 1);
    EXPECT_NE(mirrored.errors.find(differ), std::string::npos) << mirrored.errors;
}

TEST_F(Blocks, ExportsMachineFilesAndPartDrawingsHaveThemToo) {
    Write("job.dxf", Drawing(Reference("Pair", "")));
    const Outcome exported = Run({"export", "job.dxf", "job.csv"});
    EXPECT_EQ(exported.status, 0) << exported.errors;
    std::size_t sides = 0;
    const std::string rows = Read("job.csv");
    for (std::size_t at = rows.find("Left Side"); at != std::string::npos;
         at = rows.find("Left Side", at + 1))
        ++sides;
    EXPECT_EQ(sides, 2u) << rows;
    EXPECT_NE(exported.errors.find("2 solids in references"), std::string::npos) << exported.errors;
    const Outcome parts = Run({"parts", "job.dxf", "--out", "parts"});
    EXPECT_EQ(parts.status, 0) << parts.errors;
    EXPECT_EQ(LinesOf(parts.output), 17u) << parts.output;
    const Outcome cnc = Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cnc"});
    EXPECT_NE(cnc.errors.find("2 solids in references"), std::string::npos) << cnc.errors;
}

TEST_F(Blocks, ADrawingThatIsSavedKeepsItsReferencesAndTheSolidsInThemAreTold) {
    const std::string drawing = Drawing(Reference("Pair", ""));
    Write("job.dxf", drawing);
    Write("empty.journal", "# nothing\n");
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"list", "job.dxf", "--save", "saved.dxf"},
          {"run", "job.dxf", "--journal", "empty.journal", "--save", "saved.dxf"}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 1) << outcome.errors;
        EXPECT_NE(outcome.errors.find("2 solids in references to block \"Pair\" are left out: "),
                  std::string::npos)
            << outcome.errors;
        std::string saved = Read("saved.dxf");
        std::erase(saved, '\r');
        std::size_t solids = 0;
        for (std::size_t at = saved.find("\n3DSOLID\n"); at != std::string::npos;
             at = saved.find("\n3DSOLID\n", at + 1))
            ++solids;
        EXPECT_EQ(solids, 16u);
    }
}

TEST_F(Blocks, AConversionToAFormWithoutBlocksBringsEachAtItsPlace) {
    const auto count = [](const std::string& text, const std::string& word) {
        std::size_t times = 0;
        for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++times;
        return times;
    };
    Write("job.dxf", Drawing(Reference("Side", "", 500) + Reference("Pair", "")));
    for (const std::string form : {"job.step", "job.sat"}) {
        const Outcome outcome = Run({"convert", "job.dxf", form});
        EXPECT_NE(outcome.errors.find("1 solid in a reference to block \"Side\" is a part of its own here"),
                  std::string::npos)
            << outcome.errors;
        EXPECT_NE(outcome.errors.find("2 solids in references to block \"Pair\" are parts"),
                  std::string::npos)
            << outcome.errors;
        EXPECT_EQ(outcome.errors.find("AcDbBlockReference"), std::string::npos) << outcome.errors;
    }
    EXPECT_EQ(count(Read("job.step"), "MANIFOLD_SOLID_BREP("), 15u + 3u);
    EXPECT_EQ(Sides(Run({"list", "job.step", "--format", "csv"}).output).size(), 3u);
}

/// The left side alone, in block "Side" with these groups of its own, and a block "Pair" that shows it;
/// layers GREEN, OFF and COLD (frozen) besides.
class BlockLooks : public Blocks {
  protected:
    static std::string Layer(const std::string& name, int flags, int color) {
        return "  0\nLAYER\n  2\n" + name + "\n 70\n" + std::to_string(flags) + "\n 62\n" +
               std::to_string(color) + "\n  6\nCONTINUOUS\n";
    }
    static std::string Insert(const std::string& name, const std::string& look) {
        return "  0\nINSERT\n" + look + "  2\n" + name + "\n 10\n5.0\n 20\n0.0\n 30\n0.0\n";
    }
    /// The words of the STEP file that say how its part looks.
    std::string ShownAs(const std::string& solid, const std::string& inner, const std::string& reference) {
        std::string text = Drawing("");
        const std::string begin = "  0\n3DSOLID\n", onLayer = "  8\nCARCASS\n";
        const std::size_t first = text.find(begin), entities = text.find("\nENTITIES\n");
        const std::size_t end = text.find("  0\nENDBLK\n", first);
        std::string body = text.substr(first, end - first);
        body.replace(body.find(onLayer), onLayer.size(), solid);
        const std::size_t last = text.find("  0\nENDSEC", entities);
        text.replace(entities + 10, last - entities - 10, Insert("Pair2", reference));
        const std::size_t blocks = text.find("  0\nENDSEC", text.find("\nBLOCKS\n"));
        text.insert(blocks, Block("Side2", body) + Block("Pair2", Insert("Side2", inner)));
        text.insert(text.find("  0\nLAYER\n"),
                    Layer("GREEN", 0, 3) + Layer("OFF", 0, -1) + Layer("COLD", 1, 1));
        Write("job.dxf", text);
        Run({"convert", "job.dxf", "job.step"});
        const std::string step = Read("job.step");
        EXPECT_NE(step.find("MANIFOLD_SOLID_BREP("), std::string::npos);
        std::string words;
        for (const std::string word : {"'red'", "'green'", "'blue'", "'white'", "COLOUR_RGB",
                                       "SURFACE_STYLE_TRANSPARENT", "INVISIBILITY"})
            if (step.find(word) != std::string::npos) words += (words.empty() ? "" : " ") + word;
        return words;
    }
};

TEST_F(BlockLooks, WhatIsByBlockIsTheReferencesInStep) {
    const std::string onZero = "  8\n0\n", byBlock = onZero + " 62\n0\n";
    EXPECT_EQ(ShownAs(onZero, onZero, onZero), "");
    EXPECT_EQ(ShownAs(byBlock, onZero + " 62\n1\n", onZero), "'red'");
    EXPECT_EQ(ShownAs(byBlock, byBlock, onZero + " 62\n5\n"), "'blue'");
    EXPECT_EQ(ShownAs(byBlock, byBlock, "  8\nGREEN\n"), "'green'");
    EXPECT_EQ(ShownAs(byBlock, byBlock, onZero), "");
    EXPECT_EQ(ShownAs(onZero, onZero, "  8\nGREEN\n"), "'green'");
    EXPECT_EQ(ShownAs(onZero, onZero + " 62\n5\n", "  8\nGREEN\n"), "'green'");
    EXPECT_EQ(ShownAs(onZero + " 62\n1\n", onZero + " 62\n5\n", "  8\nGREEN\n"), "'red'");
    EXPECT_EQ(ShownAs(byBlock, onZero + " 62\n1\n420\n660510\n", onZero), "COLOUR_RGB");
    EXPECT_EQ(ShownAs(byBlock + "440\n16777216\n", onZero + " 62\n1\n440\n33554559\n", onZero),
              "'red' SURFACE_STYLE_TRANSPARENT");
    EXPECT_EQ(ShownAs(byBlock, onZero + " 62\n1\n440\n33554559\n", onZero), "'red'");
}

TEST_F(BlockLooks, WhatAReferenceHidesIsHiddenInStep) {
    const std::string onZero = "  8\n0\n", red = "  8\nGREEN\n 62\n1\n", hidden = " 60\n1\n";
    EXPECT_EQ(ShownAs(red, onZero, onZero + hidden), "'red' INVISIBILITY");
    EXPECT_EQ(ShownAs(red, onZero + hidden, onZero), "'red' INVISIBILITY");
    EXPECT_EQ(ShownAs(red + hidden, onZero, onZero), "'red' INVISIBILITY");
    // A frozen layer hides all that a reference shows, one that is off what the reference puts on it.
    EXPECT_EQ(ShownAs(red, onZero, "  8\nCOLD\n"), "'red' INVISIBILITY");
    EXPECT_EQ(ShownAs(red, "  8\nCOLD\n", onZero), "'red' INVISIBILITY");
    EXPECT_EQ(ShownAs(red, onZero, "  8\nOFF\n"), "'red'");
    EXPECT_EQ(ShownAs(onZero + " 62\n1\n", onZero, "  8\nOFF\n"), "'red' INVISIBILITY");
    EXPECT_EQ(ShownAs(red, "  8\nOFF\n", onZero), "'red'");
}

TEST_F(Blocks, TheIdOfTheListSelectsOneOfThem) {
    Write("job.dxf", Drawing(Reference("Pair", "")));
    const std::string list = Run({"list", "job.dxf", "--format", "csv"}).output;
    const std::size_t last = list.find_last_of('\n', list.size() - 2) + 1;
    const std::string handle = list.substr(last, list.find(',', last) - last);
    const Outcome one = Run({"list", "job.dxf", "--format", "csv", "--select", handle});
    EXPECT_EQ(one.status, 0) << one.errors;
    EXPECT_NE(one.output.find(list.substr(last)), std::string::npos) << one.output;
}

TEST_F(Blocks, ATowerOfBlocksIsToldAndNotTaken) {
    std::string text = Drawing(Reference("Tower9", ""));
    std::string tower = Block("Tower0", Reference("Side", ""));
    for (int i = 1; i < 10; ++i) {
        std::string content;
        for (int j = 0; j < 10; ++j) content += Reference("Tower" + std::to_string(i - 1), "");
        tower += Block("Tower" + std::to_string(i), content);
    }
    text.insert(text.find("  0\nENDSEC", text.find("\nBLOCKS\n")), tower);
    Write("tower.dxf", text);
    const Outcome outcome = Run({"list", "tower.dxf", "--format", "csv"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("1000000000 solids in references to block \"Tower9\" are left out: "),
              std::string::npos)
        << outcome.errors;
    EXPECT_EQ(LinesOf(outcome.output), 16u) << outcome.output;
}

TEST_F(Blocks, TheHandleOfAReferenceSelectsTheSolidsThatWereTakenOutOfIt) {
    Write("job.dxf", Drawing(Reference("Pair", "  5\nFACE\n") + Reference("Side", "  5\nFADE\n", 3000)));
    const Outcome two = Run({"list", "job.dxf", "--format", "csv", "--select", "FACE"});
    EXPECT_EQ(two.status, 0) << two.errors;
    EXPECT_EQ(Sides(two.output).size(), 2u) << two.output;
    EXPECT_EQ(LinesOf(two.output), 3u) << two.output;
    // What has nothing to do with the choice isn't spoken of.
    EXPECT_EQ(two.errors.find("\"Side\""), std::string::npos) << two.errors;
    const Outcome kept = Run({"list", "job.dxf", "--select", "FACE", "--save", "saved.dxf"});
    EXPECT_EQ(kept.status, 1);
    EXPECT_NE(kept.errors.find("2 solids in references to block \"Pair\" are left out: "), std::string::npos)
        << kept.errors;
}

TEST_F(Blocks, AReferenceToAnotherDrawingIsToldWithItsPath) {
    std::string text = Drawing(Reference("Other", ""));
    std::string other = Block("Other", "");
    other.replace(other.find(" 70\n0\n"), 6, " 70\n4\n  1\nother.dxf\n");
    text.insert(text.find("  0\nENDSEC", text.find("\nBLOCKS\n")), other);
    Write("job.dxf", text);
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"list", "job.dxf"}, {"export", "job.dxf", "job.csv"}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(
            outcome.errors.find("block \"Other\": the drawing \"other.dxf\" that it refers to is left out"),
            std::string::npos)
            << outcome.errors;
    }
}

TEST_F(Blocks, SolidsOnASheetAreToldWithTheirCountAndTheLayout) {
    const Outcome shown = ListOf(Reference("Pair", " 67\n1\n"));
    EXPECT_EQ(shown.status, 1);
    EXPECT_NE(shown.errors.find("job.dxf: 2 solids on the layout \"Layout1\" are left out: "),
              std::string::npos)
        << shown.errors;
    EXPECT_TRUE(Sides(shown.output).empty());
    std::string text = ReadFile(ShippedSample());
    std::erase(text, '\r');
    const std::size_t solid = text.find("\n3DSOLID\n");
    const std::string common = "100\nAcDbEntity\n";
    text.insert(text.find(common, solid) + common.size(), " 67\n1\n");
    // Its owner, by which it would stand in model space all the same.
    const std::size_t owner = text.find("\n330\n", solid);
    text.erase(owner, text.find("\n100\n", owner) - owner);
    Write("sheet.dxf", text);
    Write("empty.journal", "# nothing\n");
    for (const std::vector<std::string>& words : {std::vector<std::string>{"list", "sheet.dxf"},
                                                  {"run", "sheet.dxf", "--journal", "empty.journal"},
                                                  {"convert", "sheet.dxf", "sheet.step"},
                                                  {"convert", "sheet.dxf", "sheet.sat"}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find("sheet.dxf: 1 solid on the layout \"Layout1\" is left out: "),
                  std::string::npos)
            << outcome.errors;
    }
}

TEST_F(Blocks, AllReferencesTogetherShowNoMoreThanAJobHas) {
    // 6000 in each of two references; the second is asked for, so that none is measured.
    const auto many = [](int rows) {
        return " 70\n100\n 71\n" + std::to_string(rows) + "\n 44\n9.0\n 45\n9.0\n";
    };
    Write("job.dxf", Drawing(Reference("Side", many(60)) + Reference("Pair", many(30) + "  5\nFACE\n")));
    const Outcome outcome = Run({"list", "job.dxf", "--format", "csv", "--select", "FACE"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(
        outcome.errors.find("6000 solids in references to block \"Pair\" are left out: expected no more "
                            "than 10000 in all references of a drawing"),
        std::string::npos)
        << outcome.errors;
}

TEST_F(Blocks, AChainOfBlocksThatIsTooDeepIsToldAndALongOneTakesNoStack) {
    for (const int links : {20, 40, 3000}) {
        std::string text = Drawing(Reference("Link0", "")), chain;
        for (int i = 0; i < links; ++i)
            chain += Block("Link" + std::to_string(i),
                           Reference(i + 1 < links ? "Link" + std::to_string(i + 1) : "Side", ""));
        text.insert(text.find("  0\nENDSEC", text.find("\nBLOCKS\n")), chain);
        Write("chain.dxf", text);
        const Outcome outcome = Run({"list", "chain.dxf", "--format", "csv"});
        EXPECT_EQ(outcome.status, links == 20 ? 0 : 1) << links << outcome.errors;
        EXPECT_EQ(
            outcome.errors.find("1 solid in a reference to block \"Link0\" is left out: expected blocks "
                                "that are nested no deeper than 32") == std::string::npos,
            links == 20)
            << outcome.errors;
    }
}

}  // namespace
}  // namespace brenvik::cli_test
