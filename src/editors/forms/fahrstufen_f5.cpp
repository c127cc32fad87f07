#include "editors/forms/fahrstufen_f5.h"

namespace karvo
{

namespace
{

constexpr int highestOfScale = 120;

} // namespace

FahrstufenF5::FahrstufenF5(Workbench& bench, QWidget* parent)
    : Fahrstufen(bench, QStringLiteral("FahrstufenF5"), parent)
{
}

void FahrstufenF5::drawbargraphF5()
{
    drawUpTo(highestOfScale);
}

} // namespace karvo
