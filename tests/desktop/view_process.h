// Tests that look at the drawing on the screen: they need an X display with OpenGL, so they run in a process
// of their own on a virtual one.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <string>

#include "virtual_display.h"

namespace brenvik::desktop {

/// Runs the disabled tests of this program that the filter names, of which there are so many.
inline void RunOnVirtualDisplay(const char* filter, int count) {
    const VirtualDisplay display;
    if (display.Name().empty()) GTEST_SKIP() << "no virtual display here (Xvfb)";
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", QString::fromStdString(display.Name()));
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("BRENVIK_ON_DISPLAY", "1");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_also_run_disabled_tests", QString("--gtest_filter=") + filter});
    if (!process.waitForFinished(240000)) process.kill();
    process.waitForFinished();
    const std::string words = process.readAll().toStdString();
    EXPECT_EQ(process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, 0) << words;
    EXPECT_NE(words.find("[  PASSED  ] " + std::to_string(count) + " test"), std::string::npos) << words;
}

}  // namespace brenvik::desktop
