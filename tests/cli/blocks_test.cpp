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

TEST_F(Blocks, ExportsMachineFilesAndPartDrawingsHaveThemToo) {
    Write("job.dxf", Drawing(Reference("Pair", "")));
    const Outcome exported = Run({"export", "job.dxf", "job.csv"});
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
    EXPECT_NE(outcome.errors.find("block \"Tower9\" are left out: "), std::string::npos) << outcome.errors;
    EXPECT_EQ(LinesOf(outcome.output), 16u) << outcome.output;
}

}  // namespace
}  // namespace brenvik::cli_test
