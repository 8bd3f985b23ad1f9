// Windows without a display: the tests need no screen, and nobody's screen shows them.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Pictures are taken as a screen shows the windows, and the drawing is seen on an X display alone.
    const bool wantsDisplay =
        qEnvironmentVariableIsSet("BRENVIK_PICTURES") || qEnvironmentVariableIsSet("BRENVIK_ON_DISPLAY");
    if (!wantsDisplay) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
