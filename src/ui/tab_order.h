#pragma once

#include <vector>

class QWidget;

namespace karvo
{

// The controls that Tab goes through now, in the order in which the window's layouts hold them. The toolkit's
// own chain is not to be relied on: a button box ties its buttons into a ring of their own.
std::vector<QWidget*> tabOrder(const QWidget& window);

// Puts the keyboard into the next one, or the one before. False where there is none.
bool focusNextInOrder(const QWidget& window, bool next);

} // namespace karvo
