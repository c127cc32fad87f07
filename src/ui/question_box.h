#pragma once

#include "ui/message_box.h"

namespace karvo
{

// Yes or No. No is the default button; closing the box is No.
class QuestionBox : public MessageBox
{
    Q_OBJECT

public:
    QuestionBox(const LanguageTables& texts, const Text& question, QWidget* owner);
};

} // namespace karvo
