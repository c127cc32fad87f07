// The speed-step editor of the generation F5: lower limits, and a scale of its own.
#pragma once

#include "editors/forms/fahrstufen.h"

namespace karvo
{

class FahrstufenF5 : public Fahrstufen
{
    Q_OBJECT

public:
    explicit FahrstufenF5(Workbench& bench, QWidget* parent = nullptr);

protected:
    void drawbargraph() override { drawbargraphF5(); }
    void drawbargraphF5();
};

} // namespace karvo
