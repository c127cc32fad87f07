// What an image changes in the list, before anything is taken.
#pragma once

#include "firmware/image_into_list.h"
#include "ui/form.h"

namespace karvo
{

class Abbild_Aenderungen : public Form
{
    Q_OBJECT

public:
    Abbild_Aenderungen(const std::vector<ImageChange>& changes, const ProgramState& state, QWidget* parent);
};

} // namespace karvo
