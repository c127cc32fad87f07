// The end of a form that heeds its controls.
#pragma once

#include <QWidget>

namespace karvo
{

// For the destructor: a control that loses the keyboard while it is taken down must not reach a form that is
// half gone.
inline void partFromControls(QWidget& form)
{
    for (QWidget* const control : form.findChildren<QWidget*>())
        control->disconnect(&form);
}

} // namespace karvo
