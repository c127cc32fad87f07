#include "ui/flow_layout.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace karvo
{

namespace
{

class Block : public QWidget
{
public:
    explicit Block(QWidget* parent, int width, int height) : QWidget(parent), size_(width, height) {}
    QSize sizeHint() const override { return size_; }
    QSize minimumSizeHint() const override { return {20, size_.height()}; }

private:
    QSize size_;
};

struct Row : QWidget {
    FlowLayout* flow = new FlowLayout(this);
    Block* first = new Block(this, 100, 20);
    Block* second = new Block(this, 60, 30);
    Block* third = new Block(this, 80, 20);

    Row()
    {
        flow->setContentsMargins(0, 0, 0, 0);
        flow->setSpacing(10);
        for (Block* block : {first, second, third})
            flow->addWidget(block);
    }
};

} // namespace

TEST(FlowLayout, StandsInOneRowWhereThereIsRoom)
{
    Row row;
    row.flow->setGeometry(QRect(0, 0, 260, 30));
    EXPECT_EQ(row.first->geometry(), QRect(0, 0, 100, 30));
    EXPECT_EQ(row.second->geometry(), QRect(110, 0, 60, 30));
    EXPECT_EQ(row.third->geometry(), QRect(180, 0, 80, 30));
    EXPECT_EQ(row.flow->heightForWidth(260), 30);
}

TEST(FlowLayout, BeginsANewRowWhereTheWidthEnds)
{
    Row row;
    row.flow->setGeometry(QRect(0, 0, 259, 100));
    EXPECT_EQ(row.second->geometry().topLeft(), QPoint(110, 0));
    EXPECT_EQ(row.third->geometry().x(), 0);
    EXPECT_GE(row.third->geometry().y(), 30);
    EXPECT_EQ(row.flow->heightForWidth(259), row.third->geometry().y() + 30);
}

TEST(FlowLayout, NarrowsAnItemThatIsWiderThanTheRow)
{
    Row row;
    row.flow->setGeometry(QRect(0, 0, 50, 200));
    EXPECT_EQ(row.first->width(), 50);
    EXPECT_EQ(row.flow->minimumSize().width(), 20);
}

} // namespace karvo
