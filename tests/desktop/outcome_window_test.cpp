// The window on a finished CNC run, and part files painted.
#include "part_pictures/outcome_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include "base/failure.h"
#include "part_pictures/part_file_view.h"
#include "part_pictures/part_painter.h"

namespace brenvik::desktop {
namespace {

PictureShape Circle(PictureKind kind, double x, double y, double radius, const std::string& words) {
    return {
        kind, "LAYER", words, {{{x - radius, y}, {x + radius, y}, 1}, {{x + radius, y}, {x - radius, y}, 1}}};
}

PictureShape Rectangle(PictureKind kind, double width, double height, const std::string& words) {
    return {kind,
            "LAYER",
            words,
            {{{0, 0}, {width, 0}, 0},
             {{width, 0}, {width, height}, 0},
             {{width, height}, {0, height}, 0},
             {{0, height}, {0, 0}, 0}}};
}

/// A board of 600 by 400 with a hole of 40 in the middle.
PartPicture Board() {
    PartPicture picture;
    picture.shapes = {Rectangle(PictureKind::Sheet, 600, 400, "sheet 18 mm thick"),
                      Rectangle(PictureKind::Outline, 600, 400, "outline, 18.2 mm deep"),
                      Circle(PictureKind::Hole, 300, 200, 20, "hole 40 mm, 13 mm deep, tool 3")};
    picture.high = {600, 400};
    picture.length = 600;
    picture.width = 400;
    picture.thickness = 18;
    return picture;
}

TEST(PartFileViews, TellTheOperationUnderThePointer) {
    PartFileView view;
    view.resize(636, 436);
    view.Show(Board());
    QString words;
    view.onPointed = [&](const QString& told) { words = told; };
    view.show();
    const auto pointAt = [&](double x, double y) {
        QTest::mouseMove(&view, view.PlaceOf({x, y}).toPoint());
        QApplication::processEvents();
        return words;
    };
    EXPECT_EQ(pointAt(300, 200), "hole 40 mm, 13 mm deep, tool 3");
    EXPECT_EQ(pointAt(312, 212), "hole 40 mm, 13 mm deep, tool 3");
    EXPECT_EQ(pointAt(330, 230), "sheet 18 mm thick");
    EXPECT_EQ(pointAt(599, 100), "outline, 18.2 mm deep");
    EXPECT_EQ(view.ShapeAt(QPointF(1, 1)), -1);
}

TEST(PartFileViews, ShowTheFileUpright) {
    PartFileView view;
    view.resize(636, 436);
    view.Show(Board());
    EXPECT_LT(view.PlaceOf({0, 400}).y(), view.PlaceOf({0, 0}).y());
    EXPECT_LT(view.PlaceOf({0, 0}).x(), view.PlaceOf({600, 0}).x());
}

TEST(PaintedPartFiles, HaveEachArcOnItsSide) {
    // A half circle over a chord of 100, which bulges to the right of its way: downwards, in the file.
    const QRectF half = PathOf({PictureKind::Route, "", "", {{{0, 0}, {100, 0}, 1}}, false}).boundingRect();
    EXPECT_NEAR(half.top(), -50, 1e-6);
    EXPECT_NEAR(half.bottom(), 0, 1e-6);
    const QRectF flat =
        PathOf({PictureKind::Route, "", "", {{{0, 0}, {0, 100}, -0.5}}, false}).boundingRect();
    EXPECT_NEAR(flat.left(), -25, 1e-6);
    EXPECT_NEAR(flat.right(), 0, 1e-6);
}

TEST(PaintedPartFiles, ArePngWithTheColoursOfTheKinds) {
    const QImage image = QImage::fromData(QByteArray::fromStdString(PictureAsPng(Board(), "Part_0_Door_")));
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.width(), 2 * 1048);
    // The field begins below the title and is as wide as the board is long.
    const double scale = 620.0 / 400;
    const auto at = [&](double x, double y) {
        const QPointF place(24 + x * scale, 24 + 44 + (400 - y) * scale);
        return image.pixelColor((place * 2).toPoint()).name();
    };
    EXPECT_EQ(at(300, 200), QString::fromStdString(std::string(StyleOf(PictureKind::Hole).fill)));
    EXPECT_EQ(at(100, 100), QString::fromStdString(std::string(StyleOf(PictureKind::Sheet).fill)));
}

class OutcomeShown : public ::testing::Test {
  protected:
    OutcomeShown() {
        outcome.complete = true;
        outcome.parts = {{"\"Door\" (2F)", "first", "second", {}},
                         {"\"Side\" (30)", "first", "", {"The part \"Side\" (30) has a dome"}},
                         {"\"Back\" (31)", "", "", {"The part \"Back\" (31) was skipped."}}};
    }
    template <class T>
    T& Find(const char* name) {
        return *window.findChild<T*>(name);
    }
    void Choose(int row) {
        auto& parts = Find<QTreeWidget>("outcomeParts");
        parts.setCurrentItem(parts.topLevelItem(row));
    }
    QStringList Texts(const char* list) {
        QStringList texts;
        auto& shown = Find<QListWidget>(list);
        for (int at = 0; at < shown.count(); ++at) texts << shown.item(at)->text();
        return texts;
    }

    RunOutcome outcome;
    std::vector<std::string> read;
    OutcomeWindow window{[this](const std::string& path) {
                             read.push_back(path);
                             if (path == "second") throw Failure(53, "Brenvik", "File not found", path);
                             return Board();
                         },
                         nullptr};
};

TEST_F(OutcomeShown, BeginsWithTheFirstPartThatNeedsALook) {
    window.Show(outcome);
    auto& parts = Find<QTreeWidget>("outcomeParts");
    ASSERT_EQ(parts.topLevelItemCount(), 3);
    EXPECT_EQ(parts.currentItem()->text(0), "\"Side\" (30)");
    EXPECT_EQ(parts.topLevelItem(0)->text(1), "both sides");
    EXPECT_EQ(parts.topLevelItem(1)->text(2), "1");
    EXPECT_EQ(parts.topLevelItem(2)->text(1), "no file");
    EXPECT_EQ(Texts("messages"), QStringList("The part \"Side\" (30) has a dome"));
    EXPECT_EQ(Texts("legend"), (QStringList{"1 x sheet 18 mm thick", "1 x outline, 18.2 mm deep",
                                            "1 x hole 40 mm, 13 mm deep, tool 3"}));
}

TEST_F(OutcomeShown, ShowsBothSidesAndSaysWhyOneCantBe) {
    window.Show(outcome);
    read.clear();
    Choose(0);
    EXPECT_EQ(read, (std::vector<std::string>{"first", "second"}));
    auto& sides = Find<QTabWidget>("sides");
    ASSERT_EQ(sides.count(), 2);
    EXPECT_FALSE(dynamic_cast<PartFileView*>(sides.widget(0))->Picture().shapes.empty());
    EXPECT_TRUE(dynamic_cast<PartFileView*>(sides.widget(1))->Picture().shapes.empty());
    EXPECT_EQ(Texts("messages"), QStringList("No messages about this part."));
}

TEST_F(OutcomeShown, NamesTheDrawing) {
    window.Show(outcome, "R&D <1>.dxf");
    EXPECT_EQ(window.windowTitle(), "Outcome of the CNC run - R&D <1>.dxf");
    EXPECT_TRUE(Find<QLabel>("summary").text().startsWith("R&D <1>.dxf: 3 parts, "));
    window.Show(outcome);
    EXPECT_EQ(window.windowTitle(), "Outcome of the CNC run");
    EXPECT_TRUE(Find<QLabel>("summary").text().startsWith("3 parts, "));
}

// A run may have taken a part of the drawing alone: the sentence speaks of no more than the run.
TEST_F(OutcomeShown, AWholeRunSaysSoOfItsOwnPartsAlone) {
    const QString whole = "No part of the run was left out.";
    window.Show(outcome);
    EXPECT_FALSE(Find<QLabel>("summary").text().contains(whole));
    outcome.parts.resize(1);
    window.Show(outcome);
    EXPECT_TRUE(Find<QLabel>("summary").text().endsWith(whole));
    outcome.complete = false;
    window.Show(outcome);
    EXPECT_FALSE(Find<QLabel>("summary").text().contains(whole));
}

TEST_F(OutcomeShown, TellsWhatIsOfTheRunFirst) {
    outcome.complete = false;
    outcome.messages = {"The run was cancelled."};
    outcome.unknownMaterials = {"18 Oak"};
    window.Show(outcome);
    EXPECT_EQ(Find<QTreeWidget>("outcomeParts").currentItem()->text(0), "The run as a whole");
    EXPECT_EQ(Texts("messages").size(), 2);
    EXPECT_TRUE(Find<QLabel>("summary").text().contains("did not go to its end"));
}

}  // namespace
}  // namespace brenvik::desktop
