// A part whose files would not give the part: told with its place, and status 1, unless somebody has asked
// for no proof.
#include "program.h"

namespace brenvik::cli_test {
namespace {

class CncProof : public ProgramTest {
  protected:
    /// A board with a wide recess, and a nick in the recess's wall that no bit gets into.
    void WriteDrawing() const {
        Write("blank.dxf", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
        Write("make.journal",
              "host \"box 0,0,0 450,300,18 \"\n"
              "host \"box 40,40,10 410,260,19 \"\n"
              "host \"box 409,100,10 411,101,19 \"\n"
              "host \"subtract (handent \\\"100\\\")  \"\n"
              "host \"(handent \\\"101\\\") (handent \\\"102\\\")  \"\n");
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
                            "not, 371 by 220, 8 deep, from "),
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
