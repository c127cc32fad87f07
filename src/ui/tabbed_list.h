// A list whose lines have parts separated by tabs: each part stands in a column of its own.
#pragma once

#include <QListWidget>

#include <vector>

namespace karvo
{

class TabbedList : public QListWidget
{
    Q_OBJECT

public:
    struct Line {
        QString text;   // the item's text, to the letter; may have line breaks where it has no tab
        QString remark; // shown behind the parts; may be empty
        bool marked = false;
    };

    explicit TabbedList(QWidget* parent = nullptr);

    // Replaces all lines; none is chosen afterwards.
    void setLines(const std::vector<Line>& lines);

    // Below the others, and brought into view.
    void appendText(const QString& text);

    // Shown in the middle of the list while it has no lines.
    void setEmptyHint(const QString& hint);

    // Where each column begins, in pixels from a line's left edge.
    const std::vector<int>& columns() const { return columns_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void measure();

    QString emptyHint_;
    std::vector<int> columns_;
};

} // namespace karvo
