// Units of length that other programs define by conversions, and what contradicts itself in them.
#include "step/step_input.h"

#include "drafting_host/solids/exact_box.h"

namespace brenvik::step {
namespace {

class StepUnits : public StepInput {
  protected:
    /// A board of 600 by 400 by 18 in whose contexts `unit` stands for the millimetre, with these statements.
    void PutWith(const std::string& unit, const std::string& statements) const {
        std::string content = Good();
        const std::string metric = "( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.) )";
        for (std::size_t at = content.find(metric); at != std::string::npos;
             at = content.find(metric, at + 1))
            content.replace(at, metric.size(), unit);
        content.insert(content.rfind("ENDSEC;"), statements);
        Put(content);
    }
    static std::string Conversion(int number, const std::string& name, const std::string& factor,
                                  const std::string& base) {
        const std::string measure = std::to_string(number + 1);
        return "#" + std::to_string(number) + "=( CONVERSION_BASED_UNIT('" + name + "',#" + measure +
               ") LENGTH_UNIT() NAMED_UNIT(#900099) );\n#" + measure +
               "=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(" + factor + "),#" + base + ");\n";
    }
    static constexpr const char* metre =
        "#900098=( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT($,.METRE.) );\n"
        "#900099=DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.);\n";
    double Length() const { return solids::ExactBox(ReadStep(mPath).solids.at(0).shape).SizeX(); }
};

TEST_F(StepUnits, AConversionMayNameAnotherConversion) {
    PutWith("( CONVERSION_BASED_UNIT('FOOT',#900001) LENGTH_UNIT() NAMED_UNIT(#900099) )",
            "#900001=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(12.),#900002);\n" +
                Conversion(900002, "INCH", "2.54", "900004") +
                Conversion(900004, "CENTIMETRE", "0.01", "900098") + metre);
    EXPECT_EQ(NotesOf(ReadStep(mPath)), "");
    EXPECT_NEAR(Length(), 600 * 304.8, 1e-6);
    ASSERT_EQ(ReadStep(mPath).millimetresPerUnit.size(), 1u);
    EXPECT_NEAR(ReadStep(mPath).millimetresPerUnit[0], 304.8, 1e-9);
}

TEST_F(StepUnits, AConversionThatLeadsBackToItselfIsNoUnit) {
    PutWith("( CONVERSION_BASED_UNIT('FOOT',#900001) LENGTH_UNIT() NAMED_UNIT(#900099) )",
            "#900001=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(12.),#900002);\n" +
                Conversion(900002, "INCH", "2.54", "900002") + metre);
    ExpectMentions(FailureText(), "expected a unit of length that is a number above 0 of another one");
}

TEST_F(StepUnits, AFactorThatIsNoNumberOfMillimetresIsRefusedWithItsLine) {
    for (const std::string factor : {"1.E309", "1.E+9999", "0.", "-25.4", "1.E30", "1.E-30"}) {
        PutWith("( CONVERSION_BASED_UNIT('CUBIT',#900001) LENGTH_UNIT() NAMED_UNIT(#900099) )",
                "#900001=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(" + factor + "),#900098);\n" + metre);
        const std::string content = Content(), text = FailureText();
        ExpectMentions(text, "line " + LineAt(content, content.find("CONVERSION_BASED_UNIT")));
        ExpectMentions(text, "expected a unit of length");
    }
}

TEST_F(StepUnits, AUnitOfLengthWithoutItsDimensionsIsRefusedWithItsLine) {
    PutWith("( LENGTH_UNIT() NAMED_UNIT() SI_UNIT(.MILLI.,.METRE.) )", "");
    const std::string content = Content(), text = FailureText();
    ExpectMentions(text, "line " + LineAt(content, content.find("SI_UNIT(.MILLI.")));
    ExpectMentions(text, "expected NAMED_UNIT(*) beside a unit of length");
}

TEST_F(StepUnits, APrefixInWhichNobodyDrawsIsRefusedWithItsLine) {
    for (const std::string prefix : {"EXA", "GIGA", "MEGA", "ATTO"}) {
        PutWith("( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(." + prefix + ".,.METRE.) )", "");
        const std::string content = Content(), text = FailureText();
        ExpectMentions(text, "line " + LineAt(content, content.find("SI_UNIT(." + prefix)));
        ExpectMentions(text, "expected a unit of length from 1E-09 mm to 10000000 mm, found one of ");
    }
}

TEST_F(StepUnits, ALengthThatIsMeasuredByAnAngleIsRefusedWithItsLine) {
    for (const std::string measure : {"LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4)",
                                      "PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(25.4)"}) {
        PutWith("( CONVERSION_BASED_UNIT('INCH',#900001) LENGTH_UNIT() NAMED_UNIT(#900099) )",
                "#900001=" + measure +
                    ",#900097);\n#900097=( NAMED_UNIT(*) PLANE_ANGLE_UNIT() SI_UNIT($,.RADIAN.) );\n" +
                    metre);
        const std::string content = Content(), text = FailureText();
        ExpectMentions(text, "line " + LineAt(content, content.find("CONVERSION_BASED_UNIT")));
        ExpectMentions(text, "expected a unit of length that is a number above 0 of another one");
    }
}

TEST_F(StepUnits, ANameThatContradictsItsFactorIsToldWithItsLine) {
    PutWith("( CONVERSION_BASED_UNIT('INCH',#900001) LENGTH_UNIT() NAMED_UNIT(#900099) )",
            std::string("#900001=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.01),#900098);\n") + metre);
    const std::string notes = NotesOf(ReadStep(mPath));
    const std::string content = Content();
    ExpectMentions(notes, LineAt(content, content.find("CONVERSION_BASED_UNIT")) + ": the unit of length");
    ExpectMentions(
        notes, "is called \"INCH\" and has a factor of 10 mm: the factor is taken, expected one of 25.4 mm");
    EXPECT_NEAR(Length(), 6000, 1e-9);
}

TEST_F(StepUnits, TwoUnitsOfOneContextAreToldAndTheLastIsTaken) {
    std::string content = Good();
    const std::string mark = "GLOBAL_UNIT_ASSIGNED_CONTEXT";
    for (std::size_t at = content.find(mark); at != std::string::npos; at = content.find(mark, at + 1))
        content.insert(content.find(',', at), ",#900001");
    content.insert(content.rfind("ENDSEC;"), Conversion(900001, "INCH", "0.0254", "900098") + metre);
    Put(content);
    const std::string notes = NotesOf(ReadStep(mPath));
    ExpectMentions(notes, "two units of length, 1 mm and 25.4 mm: the last is taken");
    EXPECT_NE(notes.front(), '0') << "a line is told: " << notes;
    EXPECT_NEAR(Length(), 600 * 25.4, 1e-9);
}

TEST_F(StepInput, ABrokenEscapeIsToldWithItsLineAndItsTextStays) {
    for (const std::string broken :
         {"Bo\\X2\\00E4ard", "Bo\\X2\\00E\\X0\\ard", "Bo\\X4\\00E4\\X0\\ard", "Bo\\X\\G1ard"}) {
        std::string content = Good();
        const std::string name = "'Board','Board'";
        content.replace(content.find(name), name.size(), "'','" + broken + "'");
        Put(content);
        const StepDocument document = ReadStep(mPath);
        EXPECT_EQ(document.solids.at(0).name, broken);
        ExpectMentions(NotesOf(document),
                       LineAt(content, content.find(broken)) + ": text '" + broken + "' has a broken escape");
    }
}

TEST_F(StepInput, APathWithBackslashesIsNoBrokenEscape) {
    std::string content = Good();
    const std::string name = "'Board','Board'";
    content.replace(content.find(name), name.size(), "'','C:\\parts\\Xaver'");
    Put(content);
    EXPECT_EQ(NotesOf(ReadStep(mPath)), "");
}

}  // namespace
}  // namespace brenvik::step
