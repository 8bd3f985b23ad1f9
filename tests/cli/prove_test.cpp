// brenvik prove: files of an earlier run held against the drawing, whole, edited, missing and out of place.
#include <array>
#include <filesystem>

#include "base/text.h"
#include "base/western_text.h"
#include "prove_fixture.h"

namespace brenvik::cli_test {
namespace {

TEST_F(Prove, FilesOfEveryTargetMakeTheirParts) {
    for (const char* target :
         {"C2C", "ATP", "ROV", "CNI", "ASP", "WOP4", "WOP5", "THERM", "BW", "Enroute", "ABC", "RCIM"}) {
        MakeFiles(target);
        const Outcome outcome = ProveJob();
        EXPECT_EQ(outcome.errors, "") << target;
        EXPECT_EQ(outcome.output, bothRight) << target;
        EXPECT_EQ(outcome.status, 0) << target;
        EXPECT_EQ(ProveJob({"--target", target}).status, 0) << target;
    }
}

TEST_F(Prove, PartsWithoutAMaterialAreProvedByTheOneThatTheRunTakesForThem) {
    ASSERT_EQ(Run({"materials", "add", "18 UnknownMaterial", "--like", "18 white melamine"}).status, 0);
    WriteBoardsTo(folder / "job.dxf", {{"Side", "Shelf"}, "", true});
    for (const char* target : {"C2C", "WOP4", "BW"}) {
        const Outcome cut = Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet"});
        ASSERT_EQ(cut.status, 0) << cut.errors;
        const Outcome outcome = ProveJob();
        EXPECT_EQ(outcome.errors, "") << target;
        EXPECT_EQ(outcome.output, bothRight) << target;
        EXPECT_EQ(outcome.status, 0) << target;
    }
}

TEST_F(Prove, NothingIsWritten) {
    MakeFiles();
    const std::string drawing = Read("job.dxf"), file = Read("cut/Part_0_Side_7.dxf");
    const std::size_t before = FilesInCut();
    EXPECT_EQ(ProveJob().status, 0);
    EXPECT_EQ(Read("job.dxf"), drawing);
    EXPECT_EQ(Read("cut/Part_0_Side_7.dxf"), file);
    EXPECT_EQ(FilesInCut(), before);
}

TEST_F(Prove, AVanishedFileIsTold) {
    MakeFiles();
    std::filesystem::remove(folder / "cut/Part_1_Shelf_7.dxf");
    const Outcome outcome = ProveJob();
    ExpectTold(outcome, "has no file Part_1_Shelf_7.dxf in the folder", oneRightAndStrays);
    EXPECT_NE(outcome.errors.find("The file BPart_1_Shelf_7.dxf is of no part that was looked at"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(Prove, AVanishedSecondSideIsTold) {
    MakeFiles();
    std::filesystem::remove(folder / "cut/2-sided/BPart_0_Side_7.dxf");
    ExpectTold(ProveJob(), "wood stays that the part has not", oneRightAndStrays);
}

TEST_F(Prove, AnEditedFileIsTold) {
    MakeFiles();
    const std::string file = "cut/2-sided/BPart_0_Side_7.dxf";
    std::string text = Read(file);
    const std::size_t layer = text.find("VD_Z");
    ASSERT_NE(layer, std::string::npos);
    text = ReplaceAll(text, text.substr(layer, text.find_first_of("\r\n", layer) - layer), "VD_Z3_T_D5");
    Write(file, text);
    ExpectTold(ProveJob(), "a name that gives a depth of 3", oneRight);
}

TEST_F(Prove, AFileThatIsNoDrawingIsToldAsUnproved) {
    MakeFiles();
    Write("cut/Part_0_Side_7.dxf", "no drawing");
    ExpectTold(ProveJob(), "it could not be compared with its files", oneRight);
}

TEST_F(Prove, AFileOfNoPartIsTold) {
    MakeFiles();
    std::filesystem::copy(folder / "cut/Part_0_Side_7.dxf", folder / "cut/Part_9_Door_7.dxf");
    ExpectTold(ProveJob(), "The file Part_9_Door_7.dxf is of no part that was looked at", onlyStray);
}

TEST_F(Prove, ACopyUnderAnyNameIsToldAndSoIsASecondSideAmongTheFirst) {
    MakeFiles();
    for (const std::string name :
         {"Copy of Part_0_Side_7.dxf", "Part_0_Side_7 (1).dxf", "old.dxf", "BPart_0_Side_7.dxf"}) {
        std::filesystem::copy(folder / "cut/Part_0_Side_7.dxf", folder / "cut" / name);
        ExpectTold(ProveJob(), "The file " + name + " is of no part that was looked at", onlyStray);
        std::filesystem::remove(folder / "cut" / name);
    }
    std::filesystem::copy(folder / "cut/Part_0_Side_7.dxf", folder / "cut/2-sided/Part_0_Side_7.dxf");
    ExpectTold(ProveJob(), "The file Part_0_Side_7.dxf is of no part that was looked at", onlyStray);
}

TEST_F(Prove, AFileThatWasCutOffIsToldThoughAllItsOperationsAreThere) {
    MakeFiles();
    const std::string file = "cut/Part_0_Side_7.dxf", text = Read(file);
    Write(file, text.substr(0, text.rfind("EOF")));
    ExpectTold(ProveJob(), "the file Part_0_Side_7.dxf is cut off: it doesn't end with EOF", oneRight);
    Write(file, text.substr(0, text.find("ENDSEC", text.find("ENTITIES"))));
    EXPECT_EQ(ProveJob().status, 1);
}

TEST_F(Prove, AFileForAnotherPackageIsTold) {
    constexpr std::array targets{"C2C",  "ATP",   "ROV", "CNI",     "ASP", "WOP4",
                                 "WOP5", "THERM", "BW",  "Enroute", "ABC", "RCIM"};
    const auto first = [this] {
        for (const auto& entry : std::filesystem::directory_iterator(folder / "cut"))
            if (entry.path().filename().string().starts_with("Part_0"))
                return "cut/" + entry.path().filename().string();
        return std::string();
    };
    std::vector<std::string> files;
    for (const char* target : targets) {
        MakeFiles(target);
        files.push_back(Read(first()));
    }
    for (std::size_t i = 0; i < targets.size(); ++i) {
        MakeFiles(targets[i]);
        const std::string file = first();
        for (std::size_t other = 0; other < targets.size(); ++other) {
            // Two packages may have the same words for all that is on a part.
            if (files[other] == files[i]) continue;
            Write(file, files[other]);
            EXPECT_EQ(ProveJob().status, 1) << targets[other] << " among files of " << targets[i];
        }
    }
}

TEST_F(Prove, TheHeadOfAWorkListIsLookedAt) {
    MakeFiles("BW");
    const std::string list = Read("cut/WorkList.txt");
    Write("cut/WorkList.txt", ReplaceAll(list, "PIECE SECTION", "PIECES"));
    ExpectTold(ProveJob(),
               "The work list WorkList.txt has \"PIECES\" in line 1 of its head, and not \"PIECE SECTION\".",
               onlyStray);
    Write("cut/WorkList.txt", ReplaceAll(list, "Q. min", "Q. max"));
    ExpectTold(ProveJob(), "in line 3 of its head, and not \"Discr\t", onlyStray);
}

std::string WithoutReturns(const std::string& text) { return ReplaceAll(text, "\r\n", "\n"); }

/// The file without the first entity on a layer that begins so.
std::string Without(const std::string& text, const std::string& layer) {
    std::string kept = text;
    const std::size_t at = kept.find("\n" + layer, kept.find("\nENTITIES\n"));
    if (at == std::string::npos) return "no such layer";
    const std::size_t first = kept.rfind("\n  0\n", at);
    std::size_t next = kept.find("\n  0\n", at);
    // The corners of a path in space are entities of their own.
    while (kept.compare(next, 12, "\n  0\nVERTEX\n") == 0 || kept.compare(next, 12, "\n  0\nSEQEND\n") == 0)
        next = kept.find("\n  0\n", next + 1);
    return kept.erase(first, next - first);
}

TEST_F(Prove, AMissingOutlineOfARectangularPartIsTold) {
    WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false});
    ASSERT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut", "--quiet"}).status, 0);
    const std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
    Write(file, Without(text, "OT_"));
    ExpectTold(ProveJob(), "the outline is missing in the file",
               "0 of 1 parts come out of cut as they are drawn\n");
    Write(file, Without(text, "PL_"));
    ExpectTold(ProveJob(), "the sheet is missing in the file",
               "0 of 1 parts come out of cut as they are drawn\n");
    Write(file, Without(Without(text, "PL_"), "OT_"));
    ExpectTold(ProveJob(), "the outline is missing in the file",
               "0 of 1 parts come out of cut as they are drawn\n");
}

TEST_F(Prove, AnOutlineThatDoesNotCutThePartFreeIsTold) {
    // In the one the depth stands in the layer's name besides, in the other in the thickness alone.
    for (const std::string target : {"C2C", "RCIM"}) {
        WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false});
        ASSERT_EQ(Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet"}).status, 0);
        const std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
        const std::string shallow =
            ReplaceAll(ReplaceAll(text, "\n-18.3\n", "\n-9.0\n"), "OT_Z18p3", "OT_Z9");
        ASSERT_NE(shallow, text) << target;
        Write(file, shallow);
        ExpectTold(ProveJob(),
                   "the outline is 9 deep, and the part 18 thick, so that it does not cut the part free",
                   "0 of 1 parts come out of cut as they are drawn\n");
        // How far it goes into the spoil board is the shop's choice.
        Write(file, ReplaceAll(ReplaceAll(text, "\n-18.3\n", "\n-18.1\n"), "OT_Z18p3", "OT_Z18p1"));
        EXPECT_EQ(ProveJob().status, 0) << target;
        std::filesystem::remove_all(folder / "cut");
    }
}

TEST_F(Prove, ACutThatGoesDeepIntoTheSpoilBoardIsTold) {
    for (const std::string target : {"C2C", "RCIM"}) {
        WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false});
        ASSERT_EQ(Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet"}).status, 0);
        const std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
        const auto cutTo = [&](const std::string& depth, const std::string& named) {
            Write(file, ReplaceAll(ReplaceAll(text, "\n-18.3\n", "\n-" + depth + "\n"), "OT_Z18p3",
                                   "OT_Z" + named));
        };
        cutTo("1270.0", "1270");
        ExpectTold(ProveJob(), "goes 1252 into the spoil board, expected 25 at most",
                   "0 of 1 parts come out of cut as they are drawn\n");
        cutTo("43.0", "43");
        EXPECT_EQ(ProveJob().status, 0) << target;
        cutTo("43.5", "43p5");
        EXPECT_EQ(ProveJob().status, 1) << target;
        // What the shop has set is its own choice.
        cutTo("58.0", "58");
        EXPECT_EQ(ProveJob().status, 1) << target;
        ASSERT_EQ(Run({"settings", "set", "BiesseWorksSpoil", "40"}).status, 0);
        EXPECT_EQ(ProveJob().status, 0) << target;
        ASSERT_EQ(Run({"settings", "set", "BiesseWorksSpoil", "0.3"}).status, 0);
        std::filesystem::remove_all(folder / "cut");
    }
}

/// `text` with another length in place of the coordinate `from` of the entities on a layer.
std::string WithMoved(const std::string& text, const std::string& layer, const std::string& from,
                      const std::string& to) {
    const std::size_t first = text.find("\n" + layer, text.find("\nENTITIES\n"));
    if (first == std::string::npos) return text;
    const std::size_t end = text.find("\n  0\n", first);
    return text.substr(0, first) + ReplaceAll(text.substr(first, end - first), "\n" + from, "\n" + to) +
           text.substr(end);
}

TEST_F(Prove, APathThatRunsFarOutOfThePartIsTold) {
    for (const std::string target : {"C2C", "ROV"}) {
        WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false, 600, true});
        ASSERT_EQ(Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet"}).status, 0);
        EXPECT_EQ(ProveJob().status, 0) << target;
        const std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
        const std::string layer = target == "C2C" ? "RT_Z6" : "16\n";
        Write(file, WithMoved(text, layer, "606.", "1606."));
        ExpectTold(ProveJob(), " outside the part, expected 25 at most",
                   "0 of 1 parts come out of cut as they are drawn\n");
        // A little further than the run has it is fine.
        Write(file, WithMoved(text, layer, "606.", "612."));
        EXPECT_EQ(ProveJob().status, 0) << target;
        std::filesystem::remove_all(folder / "cut");
    }
}

TEST_F(Prove, ABoreThatBeginsOffItsEdgeIsToldThoughItEndsWhereItShould) {
    WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false, 600, true});
    ASSERT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut", "--quiet"}).status, 0);
    const std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
    // Its mouth lies in the plane of the left end, along the third axis.
    const std::string deeper = WithMoved(text, "HL_T", "-30.0\n", "-35.0\n");
    ASSERT_NE(deeper, text);
    Write(file, WithMoved(deeper, "HL_T", " 30\n0.0\n", " 30\n5.0\n"));
    ExpectTold(ProveJob(), "HL_T begins 5 away from the edge that it is bored from",
               "0 of 1 parts come out of cut as they are drawn\n");
}

TEST_F(Prove, AnOperationWithoutThicknessIsTold) {
    MakeFiles();
    const std::string file = "cut/2-sided/BPart_0_Side_7.dxf";
    std::string text = WithoutReturns(Read(file));
    const std::size_t layer = text.find("\nVD_Z", text.find("\nENTITIES\n"));
    ASSERT_NE(layer, std::string::npos);
    const std::size_t thickness = text.find("\n 39\n", layer);
    ASSERT_LT(thickness, text.find("\n  0\n", layer));
    const std::size_t value = thickness + 5, end = text.find_first_of("\r\n", value);
    text.replace(value, end - value, "0.0");
    Write(file, text);
    ExpectTold(ProveJob(), "where the entity is 0 deep", oneRight);
}

TEST_F(Prove, TheSideOfTheBitInANameIsLookedAt) {
    MakeFiles("BW");
    const std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
    const std::string other = ReplaceAll(text, "TC2D", "TC1D");
    ASSERT_NE(other, text);
    Write(file, other);
    ExpectTold(ProveJob(), "has another compensation than the material's direction asks for", oneRight);
}

TEST_F(Prove, ABoreThatIsNotInTheGroupOfItsEdgeIsTold) {
    WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false, 600, true});
    ASSERT_EQ(Run({"cnc", "job.dxf", "--target", "ROV", "--out", "cut", "--quiet"}).status, 0);
    const std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
    EXPECT_EQ(ProveJob().status, 0);
    const std::string other = ReplaceAll(text, "\nSIDEA\n", "\nSIDEC\n");
    ASSERT_NE(other, text);
    Write(file, other);
    ExpectTold(ProveJob(), "is in another group, and not in SIDEA",
               "0 of 1 parts come out of cut as they are drawn\n");
}

TEST_F(Prove, AHeightInANameThatIsNotTheCirclesIsTold) {
    // THERM's holes of the second side have a height where the others have a depth.
    MakeFiles("THERM");
    const std::string file = "cut/2-sided/BPart_0_Side_7_.dxf", text = WithoutReturns(Read(file));
    const std::string other = ReplaceAll(text, "drill z18\n", "drill z10\n");
    ASSERT_NE(other, text);
    Write(file, other);
    ExpectTold(ProveJob(), "a name that gives a height of 10 where the circle lies 18 high", oneRight);
}

TEST_F(Prove, AnOutlineThatTheOtherSideMakesGoodIsTold) {
    MakeFiles();
    const std::string file = "cut/Part_0_Side_7.dxf";
    std::string text = WithoutReturns(Read(file));
    const std::size_t outline = text.find("OT_Z", text.find("\nENTITIES\n"));
    const std::size_t corner = text.find("\n 10\n0.0\n", outline);
    ASSERT_NE(corner, std::string::npos);
    Write(file, text.replace(corner, 9, "\n 10\n-2.0\n"));
    ExpectTold(ProveJob(), "the outlines of the two sides differ", oneRight);
}

TEST_F(Prove, ToolsThatTheMaterialHasNotAreTold) {
    MakeFiles();
    const std::string file = "cut/Part_0_Side_7.dxf";
    const std::string text = WithoutReturns(Read(file));
    const std::size_t outline = text.find("OT_Z", text.find("\nENTITIES\n"));
    ASSERT_NE(outline, std::string::npos);
    const std::string layer = text.substr(outline, text.find_first_of("\r\n", outline) - outline);
    for (const std::string field : {"_T", "_S", "_F"}) {
        std::string other = layer;
        other.insert(other.find(field) + 2, "9");
        Write(file, ReplaceAll(text, layer, other));
        ExpectTold(ProveJob(), other + " names a tool that the material", oneRight);
    }
}

TEST_F(Prove, TheWorkListIsLookedAt) {
    MakeFiles();
    const std::string list = Read("cut/WORKLIST.TXT");
    Write("cut/WORKLIST.TXT", ReplaceAll(list, ",1,Side", ",3,Side"));
    ExpectTold(ProveJob(), "The work list WORKLIST.TXT has the line \"", onlyStray);
    Write("cut/WORKLIST.TXT", ReplaceAll(ReplaceAll(list, "MELAMINE", "OAK"), "Melamine", "Oak"));
    ExpectTold(ProveJob(), "The work list WORKLIST.TXT has the line \"", onlyStray);
    Write("cut/WORKLIST.TXT", list.substr(0, list.find('\n') + 1));
    ExpectTold(ProveJob(), "has no line for Part_1_Shelf_7.dxf", onlyStray);
    Write("cut/WORKLIST.TXT", list + list.substr(0, list.find('\n') + 1));
    ExpectTold(ProveJob(), "has a line of no part that was looked at", onlyStray);
    std::filesystem::remove(folder / "cut/WORKLIST.TXT");
    ExpectTold(ProveJob(), "The work list WORKLIST.TXT is missing", onlyStray);
}

TEST_F(Prove, AWorkListInAnotherEncodingIsToldInWordsThatCanBeRead) {
    MakeFiles();
    const std::string list = Read("cut/WORKLIST.TXT");
    std::string wide = "\xFF\xFE";
    for (const char c : list) wide += std::string{c, '\0'};
    Write("cut/WORKLIST.TXT", wide);
    Outcome outcome = ProveJob();
    ExpectTold(outcome, "The work list WORKLIST.TXT is in UTF-16, and a run's lists are plain text.\n",
               onlyStray);
    EXPECT_TRUE(IsUtf8(outcome.errors));
    Write("cut/WORKLIST.TXT", list + "T\xFCr\r\n");
    outcome = ProveJob();
    ExpectTold(outcome, "a line of no part that was looked at: \"T\xC3\xBCr\"", onlyStray);
    EXPECT_TRUE(IsUtf8(outcome.errors));
}

TEST_F(Prove, AHeadThatNamesAnotherUnitThanTheRunIsTold) {
    MakeFiles();
    const std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
    const std::string unit = "\n$INSUNITS\n 70\n", system = "\n$MEASUREMENT\n 70\n";
    ASSERT_NE(text.find(unit + "0\n"), std::string::npos);
    Write(file, ReplaceAll(text, unit + "0\n", unit + "4\n"));
    ExpectTold(ProveJob(), "$INSUNITS is 4, and the run writes 0", oneRight);
    Write(file, ReplaceAll(text, system + "0\n", system + "1\n"));
    ExpectTold(ProveJob(), "$MEASUREMENT is 1, and the run writes 0", oneRight);
}

TEST_F(Prove, ABlankLineInAWorkListIsTold) {
    MakeFiles();
    const std::string list = Read("cut/WORKLIST.TXT");
    Write("cut/WORKLIST.TXT", "\r\n" + list);
    ExpectTold(ProveJob(), "The work list WORKLIST.TXT has a blank line.", onlyStray);
}

/// The first such group behind a mark, with another value.
std::string WithGroup(std::string text, const std::string& mark, const std::string& group,
                      const std::string& value) {
    const std::size_t from = text.find(mark, text.find("\nENTITIES\n"));
    const std::size_t at = text.find("\n" + group + "\n", from) + group.size() + 2;
    return text.replace(at, text.find('\n', at) - at, value);
}

TEST_F(Prove, AFileThatContradictsItselfIsTold) {
    MakeFiles("WOP4");
    EXPECT_EQ(ProveJob().status, 0);
    std::string file = "cut/Part_0_Side_7.dxf", text = WithoutReturns(Read(file));
    const auto expect = [&](const std::string& edited, const std::string& told) {
        ASSERT_TRUE(edited != text) << told;
        Write(file, edited);
        ExpectTold(ProveJob(), told, oneRight);
    };
    expect(WithGroup(text, "LWPOLYLINE", " 90", "3"), "says that it has 3 vertices (group 90), and has 4");
    expect(WithGroup(text, "LWPOLYLINE", " 20", "7.0x"), "which is no number");
    expect(WithGroup(text, "VERTEX", "  8", "S_1"), "belongs to a line on layer S_18");
    expect(ReplaceAll(text, "\n$INSUNITS\n 70\n0\n", "\n$INSUNITS\n 70\n1\n"), "$INSUNITS is 1");
    expect(WithGroup(text, "LWPOLYLINE", "  8", "fk6t1n"), "the layer fk6t1n is not in the table of layers");
    const std::size_t sheet = text.find("\nPOLYLINE\n", text.find("\nENTITIES\n"));
    const std::size_t handle = text.find("\n  5\n", sheet) + 5;
    expect(WithGroup(text, "LWPOLYLINE", "  5", text.substr(handle, text.find('\n', handle) - handle)),
           " stands twice");
    std::string frozen = text;
    const std::size_t record = frozen.find("\n  2\nFK");
    expect(frozen.replace(frozen.find("\n 70\n0\n", record), 8, "\n 70\n1\n"), " is frozen");
    Write(file, text);
    file = "cut/2-sided/BPart_0_Side_7.dxf";
    text = WithoutReturns(Read(file));
    expect(WithGroup(text, "CIRCLE", " 40", "3.0\n 40\n9.0"), "has the group 40 twice");
    expect(WithGroup(text, "CIRCLE", " 30", "0.0\n 60\n1"), "is hidden");
    expect(ReplaceAll(text, "\n  0\nCIRCLE\n", "\n  0\nWIPEOUT\n"),
           "entities of the file BPart_0_Side_7.dxf");
}

TEST_F(Prove, ASlotOfTheOutlineThatNoBitFollowsIsTold) {
    for (const std::string target : {"C2C", "ROV", "THERM", "BW"}) {
        WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false});
        ASSERT_EQ(Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet"}).status, 0);
        std::string file;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "cut"))
            if (entry.path().filename().string().starts_with("Part_0"))
                file = "cut/" + entry.path().filename().string();
        const std::string text = WithoutReturns(Read(file));
        const auto edited = [&](const std::string& more, const std::string& count) {
            const std::size_t from = text.find("\nLWPOLYLINE\n", text.find("\nENTITIES\n"));
            std::string other = text;
            const std::string corner = "\n 10\n600.0\n 20\n0.0\n";
            const std::size_t at = other.find(corner, from);
            EXPECT_NE(at, std::string::npos) << other.substr(from, 600);
            if (at == std::string::npos) return other;
            other.insert(at, more);
            const std::size_t number = other.find("\n 90\n4\n", from);
            EXPECT_NE(number, std::string::npos);
            return other.replace(number, 7, "\n 90\n" + count + "\n");
        };
        const std::string out = "\n 10\n300.0\n 20\n0.0\n 10\n300.0\n 20\n80.0";
        Write(file, edited(out + "\n 10\n300.2\n 20\n80.0\n 10\n300.2\n 20\n0.0", "8"));
        ExpectTold(ProveJob(), "leads into wood that the part has, 0.2 by 80, right through,",
                   "0 of 1 parts come out of cut as they are drawn\n");
        Write(file, edited(out + "\n 10\n300.0\n 20\n0.0", "7"));
        ExpectTold(ProveJob(), "runs out and back the same way, from 300,",
                   "0 of 1 parts come out of cut as they are drawn\n");
        std::filesystem::remove_all(folder / "cut");
    }
}

TEST_F(Prove, AFolderThatIsNotThereIsUnreadable) {
    WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false});
    const Outcome outcome = ProveJob();
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.errors, "brenvik: cut: expected a folder with the files of a run; there is none\n");
}

TEST_F(Prove, AWrongTargetIsWrongWords) {
    const Outcome outcome = ProveJob({"--target", "XYZ"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find("found XYZ"), std::string::npos) << outcome.errors;
}

}  // namespace
}  // namespace brenvik::cli_test
