// What has to be seen on dark colours as well as on light ones.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QImage>
#include <QPainter>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <algorithm>
#include <cmath>

#include "dark_colours.h"
#include "toolkit/clear_frames.h"

namespace brenvik::desktop {
namespace {

/// As the eye weighs the colours, from 0 to 1.
double Luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// Of the indicator's pixel that differs most from the window around it.
double Contrast(QAbstractButton& button, QStyle::PrimitiveElement element, ClearFrames& style) {
    QStyleOptionButton option;
    option.initFrom(&button);
    option.state = QStyle::State_Enabled | QStyle::State_Off;
    option.rect = QRect(4, 4, 14, 14);
    const QColor ground = button.palette().color(QPalette::Window);
    QImage picture(22, 22, QImage::Format_RGB32);
    picture.fill(ground);
    {
        QPainter painter(&picture);
        style.drawPrimitive(element, &option, &painter, &button);
    }
    double most = 1;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const double one = Luminance(picture.pixelColor(x, y)) + 0.05, other = Luminance(ground) + 0.05;
            most = std::max({most, one / other, other / one});
        }
    return most;
}

TEST(DarkLook, TickBoxesWithoutATickAreSeen) {
    // What guides to readable screens ask of frames.
    constexpr double enough = 3;
    ClearFrames style;
    for (const QPalette& colours : {QPalette(QColor(0xef, 0xef, 0xef)), DarkColours()}) {
        QCheckBox tick;
        tick.setPalette(colours);
        QRadioButton choice;
        choice.setPalette(colours);
        const bool dark = colours.color(QPalette::Window).lightness() < 128;
        EXPECT_GE(Contrast(tick, QStyle::PE_IndicatorCheckBox, style), dark ? enough : 1.2);
        EXPECT_GE(Contrast(choice, QStyle::PE_IndicatorRadioButton, style), dark ? enough : 1.2);
    }
}

}  // namespace
}  // namespace brenvik::desktop
