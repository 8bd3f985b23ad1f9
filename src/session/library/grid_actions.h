// What the toolbar keys and menu entries of the grid form do, said once for both.
#pragma once

#include <span>
#include <string_view>

namespace brenvik {

class frmMain;

/// The title of the box about the program.
inline constexpr std::string_view AboutTitle = "About Brenvik";

struct GridAction {
    std::string_view key;        ///< Of the toolbar; blank where it has none.
    std::string_view menuEntry;  ///< Name of the menu entry; blank where there is none.
    std::string_view name;       ///< As users know it.
    void (*run)(frmMain&);
};

std::span<const GridAction> GridActions();

/// Runs the action of a toolbar key, or of a menu entry. One that this build lacks says so; a failure is
/// shown and leaves the form open.
void RunToolbarKey(frmMain& form, std::string_view key);
void RunMenuEntry(frmMain& form, std::string_view menuEntry);

}  // namespace brenvik
