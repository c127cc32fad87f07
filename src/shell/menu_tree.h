// The menu of the main window: every item in its place, and when it can be used.
#pragma once

#include "editors/editor_gate.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace karvo
{

struct MenuEntry {
    int depth;             // 0 in the menu bar
    std::string_view name; // empty for a separator
};

// In design order. An entry followed by a deeper one is a menu.
std::span<const MenuEntry> menuTree();

// An item's caption is the entry of the menu-caption table with its running number, from 1; the entry of the
// write's time-out is passed over. 0 for an unknown item.
std::size_t menuCaptionNumber(std::string_view name);

enum class Availability {
    notBuilt, // in no version yet
    always,
    idle,         // while no operation has the line
    withList,     // the same, once a list stands
    withCurrentCv // the same, once a CV with a value is chosen
};

// Of items; menus can always be opened.
Availability availabilityOf(std::string_view name);

// An item that can be used only where its editor opens.
struct EditorItem {
    std::string_view name;
    Editor editor;
};

std::span<const EditorItem> editorItems();

struct MenuShortcut {
    std::string_view name;
    const char* keys; // in the portable notation
};

std::span<const MenuShortcut> menuShortcuts();

} // namespace karvo
