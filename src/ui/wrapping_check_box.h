// A check box whose text continues on further lines where it is too long for one.
#pragma once

#include <QCheckBox>

class QStyleOptionButton;

namespace karvo
{

class WrappingCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit WrappingCheckBox(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }

private:
    // The space that the box itself takes from the text's width.
    int indicatorWidth() const;
    int lineHeight() const;

    // The option of a check box as high as one line, so that the box stands beside the first line.
    QStyleOptionButton firstLine() const;
};

} // namespace karvo
