// A part whose files would not give the part: told with its place, and status 1, unless somebody has asked
// for no proof.
#include "program.h"

namespace brenvik::cli_test {
namespace {

class CncProof : public ProgramTest {
  protected:
    /// A board with one step on its half length: two levels that both are as large as a face can be.
    void WriteDrawing() const {
        Write("blank.dxf", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
        Write("make.journal",
              "host \"box 0,0,0 450,300,18 \"\n"
              "host \"box -1,-1,-1 451,150,10 \"\n"
              "host \"box 314,133,-1 380,197,10 \"\n"
              "host \"box 351,110,-1 445,160,8 \"\n"
              "host \"subtract (handent \\\"100\\\")  \"\n"
              "host \"(handent \\\"101\\\") (handent \\\"102\\\") (handent \\\"103\\\")  \"\n");
        ASSERT_EQ(
            Run({"run", "blank.dxf", "--journal", "make.journal", "--save", "part.dxf", "--quiet"}).status,
            0);
    }
    Outcome Cnc(std::vector<std::string> more = {}) const {
        std::vector<std::string> words{"cnc", "part.dxf", "--target",   "C2C",           "--out",
                                       "cut", "--quiet",  "--material", "White Melamine"};
        words.insert(words.end(), more.begin(), more.end());
        return Run(words);
    }
};

TEST_F(CncProof, APartThatDoesNotComeOutIsToldWithPlaceAndSize) {
    WriteDrawing();
    const Outcome outcome = Cnc();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(
        outcome.errors.find("The part 100 does not come out as it is drawn: wood stays that the part has "
                            "not, 450 by 197, 10 deep, from 0,103 to 450,300 on the top face"),
        std::string::npos)
        << outcome.errors;
}

TEST_F(CncProof, WithoutItTheSamePartPassesForDone) {
    WriteDrawing();
    const Outcome outcome = Cnc({"--no-proof"});
    EXPECT_EQ(outcome.errors.find("does not come out"), std::string::npos) << outcome.errors;
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
}

TEST_F(CncProof, APartOnAFrozenLayerIsMadeLikeAnyOther) {
    Write("blank.dxf", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    Write("make.journal",
          "host \"-layer m Doors  \"\n"
          "host \"box 0,0,0 450,300,18 \"\n"
          "host \"cylinder 100,100,8 5 12 \"\n"
          "host \"box 200,100,-1 300,200,20 \"\n"
          "host \"subtract (handent \\\"100\\\")  \"\n"
          "host \"(handent \\\"101\\\") (handent \\\"102\\\")  \"\n"
          "host \"-layer s 0  \"\n"
          "host \"-layer f Doors  \"\n");
    ASSERT_EQ(Run({"run", "blank.dxf", "--journal", "make.journal", "--save", "part.dxf", "--quiet"}).status,
              0);
    for (const std::string target : {"C2C", "CNI"}) {
        const Outcome outcome = Run({"cnc", "part.dxf", "--target", target, "--out", "cut" + target,
                                     "--quiet", "--material", "White Melamine"});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
    }
}

}  // namespace
}  // namespace brenvik::cli_test
