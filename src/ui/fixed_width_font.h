#pragma once

#include <QFont>

namespace karvo
{

// The system's; where it names one whose letters have different widths, the first family whose have not.
QFont fixedWidthFont();

} // namespace karvo
