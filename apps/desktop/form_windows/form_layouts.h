// Where the controls of each form stand in its window: data, so that a window is made without code of its
// own.
#pragma once

#include <string_view>
#include <vector>

namespace brenvik::desktop {

/// A control by its name, or an arrangement of others.
struct Place {
    enum class Kind {
        Control,
        Row,
        Column,
        Table,    ///< Filled row by row, `columns` of them.
        Box,      ///< A frame control around the rest; `caption` where the control has none.
        Heading,  ///< A group without a control, by its caption alone.
        Space,    ///< Takes what room is left.
    };
    Kind kind = Kind::Control;
    std::string_view name, caption;
    std::vector<Place> inside;
    int columns = 0;
    /// Of the room that is left in a row or a column.
    int share = 0;
};

/// A menu by its own control, or by a caption where the form has none for it.
struct MenuPlace {
    std::string_view name, caption;
    std::vector<std::string_view> entries;
};

struct FormLayout {
    std::string_view form;
    Place content;
    std::vector<MenuPlace> menus;
    /// What Enter and Escape press. Without a second one Escape closes the window.
    std::string_view enter, escape;
};

/// The layout of the form of this name; a form without one is a defect.
const FormLayout& LayoutOf(std::string_view form);
/// All of them.
const std::vector<FormLayout>& FormLayouts();

/// Whether the text of a combo box is free; of the others one item is chosen.
bool TakesFreeText(std::string_view comboBox);
/// Whether typed characters are masked.
bool IsSecret(std::string_view textBox);

}  // namespace brenvik::desktop
