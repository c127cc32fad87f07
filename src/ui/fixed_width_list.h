// A list whose lines are read like a table: a text in a fixed-width font, and muted beside it what the text
// stands for.
#pragma once

#include <QListWidget>

#include <vector>

namespace karvo
{

class FixedWidthList : public QListWidget
{
    Q_OBJECT

public:
    struct Row {
        QString text; // the item's text, to the letter
        QString name; // shown in a second column; may be empty
    };

    explicit FixedWidthList(QWidget* parent = nullptr);

    // Replaces all rows; none is chosen afterwards.
    void setRows(const std::vector<Row>& rows);

    // The same, but as many rows as before only change their texts: the chosen one, and what is in sight,
    // stay.
    void updateRows(const std::vector<Row>& rows);

    // Shown in the middle of the list while it has no rows.
    void setEmptyHint(const QString& hint);

    // Where the second column begins, in pixels from a row's left edge.
    int nameColumn() const { return nameColumn_; }

    // All rows are of one size: as wide as the widest needs.
    QSize rowSize() const { return rowSize_; }

signals:
    // Over the chosen row: a digit that begins a value; a key that asks for the value's entry; a step of the
    // value up (1) or down (-1).
    void digitTyped(const QString& digit);
    void entryWanted();
    void stepWanted(int by);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void useFixedFont();
    void measureRows();

    QString emptyHint_;
    int nameColumn_ = 0;
    QSize rowSize_;
};

} // namespace karvo
