// What a body says of itself beside its ACIS data, in files whose checksums are right.
#include "drafting_host/dwg/body_checks.h"

#include <gtest/gtest.h>

#include "drafting_host/dwg/bodies.h"
#include "dwg/changed_sample.h"
#include "dwg/made_objects.h"

namespace brenvik {
namespace {

using namespace dwg;

/// The mask is its own opposite.
std::string MaskedBits(std::string_view text) { return test::BitsOf(Unmasked(text)); }

std::string RealBits(double value) {
    test::BitWriter bits;
    bits.Real(value);
    return test::BitsOf(bits.Bytes()).substr(0, 66);
}

/// A sample with a piece of one body's bits replaced by as many others.
DrawingData Replaced(const std::string& release, HandleValue handle, const std::string& from,
                     const std::string& to) {
    return test::ChangedSample(release, handle, [&](std::string& bits) {
        const std::size_t at = bits.find(from);
        if (at == std::string::npos) throw std::runtime_error("no such bits");
        bits.replace(at, from.size(), to);
    });
}

/// Two sides and the way between them, of a sheet whose corners are (0, 0) and (`width`, 2).
AcisData Sheet(const std::string& width, const std::string& transform, const std::string& curve) {
    const std::string place = transform.empty() ? "$-1" : "$6";
    AcisData data;
    data.text =
        "400 0 1 0\n6 Plans\n9 ACIS 4.00 3 now\n1 1e-06 1e-10\n"
        "body $-1 $-1 $-1 " +
        place + " #\nvertex $-1 $-1 $2 #\npoint $-1 0 0 0 #\nvertex $-1 $-1 $4 #\npoint $-1 " + width +
        " 2 0 #\n" + curve + " $-1 0 0 0 1 0 0 I I #\n";
    if (!transform.empty()) data.text += "transform $-1 " + transform + " #\n";
    return data;
}

class BodiesOfOneFile {
  public:
    void Add(const AcisData& body, const Point3& middle) {
        Further further;
        further.body.middle = middle;
        mChecks.Take({"3DSOLID", ++mHandle}, body, further);
    }
    void AddMark(bool mark, bool isText) {
        Further further;
        further.body.mark = mark;
        further.body.isText = isText;
        mChecks.Take({"3DSOLID", ++mHandle}, AcisData(), further);
    }
    std::string Told() const {
        Reading reading;
        mChecks.Tell(reading);
        std::string all;
        for (const ReadNote& note : reading.data.notes)
            all += (note.dataLost ? "" : "remark: ") + note.text + "\n";
        return all;
    }

  private:
    BodyChecks mChecks;
    HandleValue mHandle = 0;
};

constexpr const char* Straight = "straight-curve";

TEST(DwgBodyChecks, AMiddleThatIsElsewhereThanTheFilesOthersIsTold) {
    const AcisData sheet = Sheet("6", "1 0 0 0 1 0 0 0 1 10 20 5 1 no_rotate no_reflect no_shear", Straight);
    BodiesOfOneFile file;
    file.Add(sheet, {13, 21, 5});
    file.Add(Sheet("8", "", Straight), {4, 1, 0});
    EXPECT_EQ(file.Told(), "");
    file.Add(sheet, {13, 53, 5});
    EXPECT_EQ(file.Told(),
              "3DSOLID (handle 3): its middle is said to be at (13.0, 53.0, 5.0) where (13.0, 21.0, 5.0) was "
              "expected, as its faces have it: it may be damaged\n");
}

TEST(DwgBodyChecks, AProgramMayMeanAnotherMiddle) {
    BodiesOfOneFile file;
    for (int i = 0; i < 3; ++i) file.Add(Sheet("6", "", Straight), {0, 0, 0});
    file.Add(Sheet("6", "", Straight), {3, 1, 0});
    EXPECT_EQ(file.Told(), "");
}

// A round edge reaches beyond its ends; of a turned body some have the middle turned.
TEST(DwgBodyChecks, RoundAndTurnedBodiesHaveNoCertainMiddle) {
    BodiesOfOneFile file;
    for (int i = 0; i < 6; ++i) file.Add(Sheet("6", "", Straight), {3, 1, 0});
    file.Add(Sheet("6", "", "ellipse-curve"), {3, 2, 0});
    file.Add(Sheet("6", "0.6 0.8 0 -0.8 0.6 0 0 0 1 0 0 0 1 rotate no_reflect no_shear", Straight),
             {3, 1, 0});
    EXPECT_EQ(file.Told(), "");
    file.Add(Sheet("6", "0 1 0 -1 0 0 0 0 1 0 0 0 1 rotate no_reflect no_shear", Straight), {3, 1, 0});
    EXPECT_NE(file.Told(), "");
}

TEST(DwgBodyChecks, AMarkThatIsOtherwiseThanTheFilesOthersIsTold) {
    BodiesOfOneFile file;
    file.AddMark(true, true);
    file.AddMark(true, true);
    file.AddMark(false, false);
    EXPECT_EQ(file.Told(), "");
    file.AddMark(false, true);
    EXPECT_EQ(file.Told(),
              "3DSOLID (handle 4): the mark in front of its body is 0 where 1 was expected, as the file's "
              "other bodies have it: it may be damaged\n");
    file.AddMark(false, true);
    EXPECT_EQ(file.Told(), "");
}

class DwgBodyWitnesses : public testing::Test {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    }
};

TEST_F(DwgBodyWitnesses, ABodyThatADamagedNumberMovesIsTold) {
    test::ExpectLoss(
        Replaced("AC1015", 0xD6A, MaskedBits(" 15.276725"), MaskedBits(" 15.476725")),
        "3DSOLID (handle D6A): its middle is said to be at (31.68576276175316, -220.1073207992332, "
        "2.190243577557252) where (31.88576276175316, -220.1073207992332, 2.190243577557252) was expected, "
        "as its faces have it: it may be damaged");
}

TEST_F(DwgBodyWitnesses, AMiddleThatIsDamagedIsTold) {
    for (const char* release : {"AC1014", "AC1015"})
        test::ExpectLoss(Replaced(release, 0xD65, RealBits(2.5), RealBits(10.5)),
                         "3DSOLID (handle D65): its middle is said to be at (17.77672546982376, "
                         "-220.85012266071593, 10.5) where (17.77672546982376, -220.85012266071593, 2.5) was "
                         "expected, as its faces have it: it may be damaged");
}

TEST_F(DwgBodyWitnesses, AMarkThatIsDamagedIsTold) {
    test::ExpectLoss(test::ChangedSample("AC1015", 0xD6A, [](std::string& bits) { bits[431] = '0'; }),
                     "3DSOLID (handle D6A): the mark in front of its body is 0 where 1 was expected, as the "
                     "file's other bodies have it: it may be damaged");
}

TEST_F(DwgBodyWitnesses, AnIdentifierOfItsLastChangeThatIsDamagedIsTold) {
    for (const std::size_t bit : {116U, 230U})
        test::ExpectLoss(
            test::ChangedSample("AC1015", 0xD6A,
                                [&](std::string& bits) { bits[bit] = bits[bit] == '1' ? '0' : '1'; }),
            "entity (handle D6A): the extended data of \"ACAD_OBJECT_CHANGE_GUID\" hold an identifier that "
            "isn't one: they may be damaged");
}

// The solid itself is whole.
TEST_F(DwgBodyWitnesses, ABodyWhoseEndIsDamagedIsTakenAndTold) {
    const std::string middle = RealBits(31.685762761753161);
    const DrawingData data = Replaced("AC1015", 0xD6A, middle, "11" + middle.substr(2));
    test::ExpectLoss(
        data,
        "3DSOLID (handle D6A): what stands behind its body can't be read: the code of a number was expected");
}

}  // namespace
}  // namespace brenvik
