#include "ui/tab_order.h"

#include <QLayout>
#include <QScrollArea>

#include <algorithm>

namespace karvo
{

namespace
{

using Controls = std::vector<QWidget*>;

void gather(QLayout& layout, Controls& controls);

void gather(QWidget& widget, Controls& controls)
{
    if ((widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() &&
        widget.isVisibleTo(widget.window()))
        controls.push_back(&widget);
    const auto* const area = qobject_cast<QScrollArea*>(&widget);
    if (area != nullptr && area->widget() != nullptr)
        gather(*area->widget(), controls);
    else if (widget.layout() != nullptr)
        gather(*widget.layout(), controls);
}

void gather(QLayout& layout, Controls& controls)
{
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem& item = *layout.itemAt(i);
        if (item.widget() != nullptr)
            gather(*item.widget(), controls);
        else if (item.layout() != nullptr)
            gather(*item.layout(), controls);
    }
}

} // namespace

std::vector<QWidget*> tabOrder(const QWidget& window)
{
    Controls controls;
    if (window.layout() != nullptr)
        gather(*window.layout(), controls);
    return controls;
}

bool focusNextInOrder(const QWidget& window, bool next)
{
    const Controls controls = tabOrder(window);
    if (controls.empty())
        return false;
    const QWidget* from = window.focusWidget();
    auto at = controls.end();
    for (; from != nullptr && at == controls.end(); from = from->parentWidget()) // a part of a control
        at = std::find(controls.begin(), controls.end(), from);
    if (at == controls.end())
        at = next ? controls.begin() : controls.end() - 1;
    else if (next)
        at = at + 1 == controls.end() ? controls.begin() : at + 1;
    else
        at = at == controls.begin() ? controls.end() - 1 : at - 1;
    (*at)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

} // namespace karvo
