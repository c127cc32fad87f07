// A part of the main window that may be too high for a small screen.
#pragma once

#include <QScrollArea>

namespace karvo
{

// As wide as its widget needs, and no scroll bar below: only the height may be too small.
class UprightScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    UprightScrollArea(QWidget* content, QWidget* parent);

    QSize minimumSizeHint() const override;

protected:
    // Other words need another width: without this the splitter keeps the one of the words before.
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace karvo
