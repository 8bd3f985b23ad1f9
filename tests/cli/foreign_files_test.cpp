// Drawings of other programs that a command has not read: no saving takes their place, by whatever way it is
// asked for, while what this program saved may be saved over.
#include <filesystem>

#include "played_journal.h"

namespace brenvik::cli_test {
namespace {

/// The program's name in the head of a file replaced by one of the same length.
std::string OfAnotherProgram(std::string content) {
    for (std::size_t at = content.find("Brenvik"); at != std::string::npos; at = content.find("Brenvik", at))
        content.replace(at, 7, "Another");
    return content;
}

std::string ReplaceFirst(std::string content, const std::string& what, const std::string& by) {
    return content.replace(content.find(what), what.size(), by);
}

class ForeignFiles : public PlayedJournal {
  protected:
    ForeignFiles() {
        EXPECT_EQ(Run({"init"}).status, 0);
        WriteSample("job.dxf");
        for (const char* name : {"own.step", "own.sat", "own.dxf"})
            Run({"convert", "job.dxf", name, "--quiet"});
        Write("foreign.step", OfAnotherProgram(Read("own.step")));
        Write("foreign.sat", OfAnotherProgram(Read("own.sat")));
        Write("foreign.dxf", OfAnotherProgram(Read("own.dxf")));
        Write("forked.dxf", ReplaceFirst(Read("own.dxf"), "Saved by Brenvik\r", "Saved by Brenvikx\r"));
        Write("foreign.dwg", "AC1018" + std::string(200, '\0'));
        Write("notes.dxf", "a list of somebody's\n");
    }
    struct Foreign {
        const char *name, *found;
    };
    static constexpr Foreign Foreigns[] = {
        {"foreign.step", "a STEP file that this program did not save"},
        {"foreign.sat", "a file of ACIS data that this program did not save"},
        {"foreign.dxf", "a DXF drawing that this program did not save"},
        {"forked.dxf", "a DXF drawing that this program did not save"},
        {"foreign.dwg", "a binary drawing (DWG) that this program did not save"},
        {"notes.dxf", "a file that is no drawing of this program"},
    };
    void ExpectRefused(const Outcome& outcome, int status, const Foreign& foreign,
                       const std::string& before) const {
        EXPECT_EQ(outcome.status, status) << foreign.name << outcome.errors;
        EXPECT_NE(outcome.errors.find(std::string(foreign.name) +
                                      ": expected a file of its own for the output, found " + foreign.found),
                  std::string::npos)
            << outcome.errors;
        EXPECT_EQ(Read(foreign.name), before) << foreign.name;
    }
};

TEST_F(ForeignFiles, AreNotWrittenOverByACommand) {
    Write("a.journal", "select all\n");
    for (const Foreign& foreign : Foreigns) {
        const std::string before = Read(foreign.name);
        for (const std::vector<std::string>& words :
             {std::vector<std::string>{"convert", "job.dxf", foreign.name},
              {"list", "job.dxf", "--save", foreign.name},
              {"sample", foreign.name},
              {"run", "job.dxf", "--journal", "a.journal", "--save", foreign.name}})
            ExpectRefused(Run(words), 2, foreign, before);
    }
}

TEST_F(ForeignFiles, AreNotWrittenOverByAJournal) {
    for (const Foreign& foreign : Foreigns) {
        const std::string before = Read(foreign.name);
        ExpectRefused(Play("save \"" + std::string(foreign.name) + "\"\n"), 1, foreign, before);
    }
}

TEST_F(ForeignFiles, ArePutOutOfTheWayByAnotherName) {
    const Outcome outcome = Run({"convert", "job.dxf", "foreign.dxf"});
    EXPECT_NE(outcome.errors.find("give another name; nothing was written\n"), std::string::npos)
        << outcome.errors;
    EXPECT_EQ(Run({"convert", "job.dxf", "another.dxf"}).status, 0);
}

TEST_F(ForeignFiles, AreTheirOwnersToSaveOverWhenTheyWereRead) {
    EXPECT_EQ(Run({"list", "foreign.dxf", "--save", "foreign.dxf"}).status, 0);
    Write("a.journal", "save \"job.dxf\"\n");
    EXPECT_EQ(Run({"run", "job.dxf", "--journal", "a.journal"}).status, 0);
}

TEST_F(ForeignFiles, ThatThisProgramSavedAreNone) {
    for (const std::string name : {"own.dxf", "own.step", "own.sat"}) {
        const std::string before = Read(name);
        EXPECT_NE(Run({"list", "job.dxf", "--select", "100", "--material", "Oak", "--save", name}).status, 2)
            << name;
        EXPECT_EQ(
            Play("select 100\nhost \"erase previous  \"\nsave \"" + name + "\"\nsave \"" + name + "\"\n")
                .errors.find("expected a file of its own"),
            std::string::npos);
        EXPECT_NE(Read(name), before) << name;
        EXPECT_NE(Run({"sample", name}).status, 2) << name;
    }
    // Empty files, as scripts make them to have a name, hold nothing of anybody.
    Write("empty.step", "");
    EXPECT_NE(Run({"convert", "job.dxf", "empty.step"}).status, 2);
}

TEST_F(ForeignFiles, AreNoPlaceForAList) {
    for (const std::string name : {"foreign.step", "own.dxf", "foreign.sat"}) {
        const std::string before = Read(name);
        const Outcome outcome = Run({"export", "job.dxf", name});
        EXPECT_EQ(outcome.status, 2) << outcome.errors;
        EXPECT_NE(outcome.errors.find(name + ": expected a file of its own for the output, found a "),
                  std::string::npos)
            << outcome.errors;
        EXPECT_EQ(Read(name), before);
    }
}

TEST_F(ForeignFiles, TheMarkOfASavedDxfIsAComment) {
    EXPECT_EQ(Read("own.dxf").rfind("999\r\nSaved by Brenvik\r\n  0\r\nSECTION\r\n", 0), 0u);
    // Once, however often the drawing is saved.
    Run({"convert", "own.dxf", "again.dxf"});
    EXPECT_EQ(Read("again.dxf"), Read("own.dxf"));
}

}  // namespace
}  // namespace brenvik::cli_test
