// The menu of the main window: every item in its place, and when it can be used.
#pragma once

#include "editors/editor_gate.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace karvo
{

enum class Availability {
    notBuilt, // in no version yet
    always,
    idle,         // while no operation has the line
    withList,     // the same, once a list stands
    withCurrentCv // the same, once a CV with a value is chosen
};

struct MenuEntry {
    int depth;               // 0 in the menu bar
    std::string_view name;   // empty for a separator
    std::size_t caption = 0; // its entry in the menu-caption table

    Availability availability = Availability::notBuilt; // of an item; menus can always be opened
    const char* keys = "";                              // its shortcut, in the portable notation
    std::optional<Editor> editor = {};                  // the item can be used only where this one opens
};

// In design order. An entry followed by a deeper one is a menu.
std::span<const MenuEntry> menuTree();

// None for an unknown name.
const MenuEntry* menuEntry(std::string_view name);

} // namespace karvo
