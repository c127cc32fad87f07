// The choice of a language on the first start.
#pragma once

#include "language/first_start.h"
#include "language/language_code.h"
#include "program/prompts.h"
#include "ui/form.h"

class QButtonGroup;

namespace karvo
{

// Accepted by OK. Cancel and closing say that the program ends, and end it.
class Language : public Form
{
    Q_OBJECT

public:
    // `texts`: as yet without a language; `proposed` is ticked at first.
    Language(const LanguageTables& texts, const LanguageButtonCaptions& captions, LanguageCode proposed,
             Prompts& prompts, QWidget* parent = nullptr);

    LanguageCode chosen() const;

protected:
    bool mayClose() override;

private:
    Prompts& prompts_;
    QButtonGroup* choices_;
};

} // namespace karvo
