// Why an item of the menu can not be chosen now, though the line is idle.
#pragma once

#include "editors/sheet_store.h"
#include "shell/main_menu.h"
#include "shell/menu_tree.h"
#include "workbench/workbench.h"

namespace karvo
{

// Nothing where it can be.
std::optional<Text> whyNotChosen(const MenuEntry& entry, const ProgramState& state, const SheetStore& sheets);

// The sheets of the person's own folder, and what there is no sheet.
std::vector<OwnItem> ownItems(const ProgramState& state, const SheetStore& sheets);

} // namespace karvo
