// The choice of a language on the first start.
#pragma once

#include "language/first_start.h"
#include "language/language_code.h"
#include "program/prompts.h"

#include <QDialog>

class QButtonGroup;

namespace karvo
{

// Accepted by OK. Cancel and closing say that the program ends, and end it.
class Language : public QDialog
{
    Q_OBJECT

public:
    // `proposed` is ticked at first.
    Language(const LanguageButtonCaptions& captions, LanguageCode proposed, Prompts& prompts,
             QWidget* parent = nullptr);

    LanguageCode chosen() const;

    void reject() override;

private:
    Prompts& prompts_;
    QButtonGroup* choices_;
};

} // namespace karvo
