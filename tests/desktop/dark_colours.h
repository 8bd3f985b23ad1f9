// Dark colours, as desktops with them hand them to their programs.
#pragma once

#include <QPalette>

namespace brenvik::desktop {

inline QPalette DarkColours() {
    QPalette dark(QColor(0x33, 0x36, 0x3a), QColor(0x2b, 0x2d, 0x31));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x20, 0x23));
    dark.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2c));
    dark.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xca));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(0x80, 0x84, 0x8a));
    return dark;
}

}  // namespace brenvik::desktop
