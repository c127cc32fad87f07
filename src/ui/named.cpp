#include "ui/named.h"

#include "ui/typed_text.h"

namespace karvo
{

QLineEdit* entryField(const char* name, QWidget* parent, int mostCharacters)
{
    auto* const field = named<QLineEdit>(name, parent);
    field->setValidator(new Windows1252Validator(field));
    if (mostCharacters > 0)
        field->setMaxLength(mostCharacters);
    return field;
}

QLabel* textLabel(const char* name, QWidget* parent, const QString& text)
{
    auto* const label = named<QLabel>(name, parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

QLabel* labelFor(QWidget& control, const QString& text)
{
    auto* const label = new QLabel(control.parentWidget());
    label->setTextFormat(Qt::PlainText);
    label->setText(QString(text).replace(u'&', QStringLiteral("&&"))); // with a buddy it would underline
    label->setBuddy(&control);
    control.setAccessibleName(text);
    return label;
}

} // namespace karvo
