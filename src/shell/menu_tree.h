// The menu of the main window: every item in its place, when it can be used, and what it does.
#pragma once

#include "editors/editor_gate.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace karvo
{

struct Controllers;

enum class Availability {
    always,
    idle,         // while no operation has the line
    withList,     // the same, once a list stands
    withCurrentCv // the same, once a CV with a value is chosen
};

// What an item needs of the list or the decoder, beside an editor.
enum class Opens { other, sheet, vehiclePage, receiverPage, receiverReset };

struct MenuEntry {
    // Runs once what is typed in the main window has been settled.
    using Handler = void (*)(Controllers&, const MenuEntry&);

    int depth;               // 0 in the menu bar
    std::string_view name;   // its object name
    std::size_t caption = 0; // its entry in the menu-caption table; 0 for a separator

    Availability availability = Availability::always; // of an item; menus can always be opened
    Handler handler = nullptr;                        // an item without one is in no version yet
    const char* keys = "";                            // its shortcut, in the portable notation
    std::optional<Editor> editor = {};                // the item can be used only where this one opens
    Opens opens = Opens::other;

    constexpr bool isSeparator() const { return caption == 0; }

    // Without "mnu_": what the windows of function sheets are called, and their files.
    constexpr std::string_view itemName() const { return name.substr(4); }
};

// In design order. An entry followed by a deeper one is a menu.
std::span<const MenuEntry> menuTree();

// None for an unknown name.
const MenuEntry* menuEntry(std::string_view name);

// What an item of the tree is called: the title of what it opens.
Text menuCaption(const LanguageTables& texts, std::string_view name);

} // namespace karvo
