// The window that tells how far long work is, and how it is cancelled.
#include "windows/progress_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "form_windows/form_desk.h"
#include "session/progress.h"

namespace brenvik::desktop {
namespace {

class LongWorkShown : public ::testing::Test {
  protected:
    LongWorkShown() { ShowProgressBy(&shown); }
    ~LongWorkShown() override { ShowProgressBy(nullptr); }
    static QDialog* Box() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == "progress" && widget->isVisible())
                return qobject_cast<QDialog*>(widget);
        return nullptr;
    }

    FormDesk desk;
    ProgressWindow shown{desk, 0};
};

TEST_F(LongWorkShown, NamesThePartAndGoesAway) {
    {
        Progress work({"CNC run", 7, true});
        EXPECT_TRUE(work.Next("Door"));
        ASSERT_NE(Box(), nullptr);
        EXPECT_EQ(Box()->windowTitle(), "CNC run");
        EXPECT_EQ(Box()->findChild<QLabel*>("step")->text(), "1 of 7: Door");
        EXPECT_TRUE(Box()->findChild<QPushButton*>("cancel")->isEnabled());
    }
    EXPECT_EQ(Box(), nullptr);
}

TEST_F(LongWorkShown, IsCancelledByTheButtonAndByEscape) {
    for (const bool escape : {false, true}) {
        Progress work({"CNC run", 3, true});
        EXPECT_TRUE(work.Next("Door"));
        QTimer::singleShot(0, [&] {
            if (escape)
                Box()->reject();
            else
                Box()->findChild<QPushButton*>("cancel")->click();
        });
        bool goesOn = true;
        // The window looks at its events a few times a second.
        for (int step = 0; goesOn && step < 100000000; ++step) goesOn = work.Next("Side");
        EXPECT_FALSE(goesOn);
        EXPECT_FALSE(Box()->findChild<QPushButton*>("cancel")->isEnabled());
    }
}

TEST_F(LongWorkShown, WorkThatCantBeCancelledSaysSo) {
    Progress work({"Writing the list to the drawing", 3});
    EXPECT_TRUE(work.Next("Door"));
    EXPECT_FALSE(Box()->findChild<QPushButton*>("cancel")->isEnabled());
    EXPECT_NE(Box()->findChild<QLabel*>("note")->text(), "");
    Box()->reject();
    EXPECT_NE(Box(), nullptr) << "Escape doesn't hide it either";
}

TEST(LongWorkThatIsShort, ShowsNoWindow) {
    FormDesk desk;
    ProgressWindow shown(desk, 60000);
    ShowProgressBy(&shown);
    Progress work({"Export", 2, true});
    work.Next("Door");
    for (const QWidget* widget : QApplication::topLevelWidgets())
        EXPECT_FALSE(widget->objectName() == "progress" && widget->isVisible());
    ShowProgressBy(nullptr);
}

}  // namespace
}  // namespace brenvik::desktop
