// What a person types: only characters that the system's files can hold.
#pragma once

#include "program/text.h"

#include <QString>
#include <QValidator>

namespace karvo
{

Text typedText(const QString& typed);

// Refuses every character that Windows-1252 lacks.
class Windows1252Validator : public QValidator
{
    Q_OBJECT

public:
    explicit Windows1252Validator(QObject* parent) : QValidator(parent) {}
    State validate(QString& typed, int& position) const override;
};

} // namespace karvo
