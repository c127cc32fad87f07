#include "ui/flow_layout.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(FlowLayout, BeginsANewRowWhereTheWidthEndsAndNarrowsWhatIsWiderThanTheRow)
{
    FlowLayout flow(nullptr);
    flow.setContentsMargins(0, 0, 0, 0);
    flow.setSpacing(10);
    for (const QSize size : {QSize(100, 20), QSize(60, 30), QSize(80, 20)})
        flow.addItem(new QSpacerItem(size.width(), size.height(), QSizePolicy::Preferred));
    const auto placeOf = [&](int item) { return flow.itemAt(item)->geometry(); };
    flow.setGeometry(QRect(0, 0, 260, 30));
    EXPECT_EQ(placeOf(0), QRect(0, 0, 100, 30));
    EXPECT_EQ(placeOf(1), QRect(110, 0, 60, 30));
    EXPECT_EQ(placeOf(2), QRect(180, 0, 80, 30));
    EXPECT_EQ(flow.heightForWidth(260), 30);
    flow.setGeometry(QRect(0, 0, 259, 100));
    EXPECT_EQ(placeOf(1).topLeft(), QPoint(110, 0));
    EXPECT_EQ(placeOf(2).x(), 0);
    EXPECT_GE(placeOf(2).y(), 30);
    EXPECT_EQ(flow.heightForWidth(259), placeOf(2).y() + 30);
    flow.setGeometry(QRect(0, 0, 50, 200));
    EXPECT_EQ(placeOf(0).width(), 50);
    flow.addItem(new QSpacerItem(20, 5, QSizePolicy::Minimum));
    EXPECT_EQ(flow.minimumSize().width(), 20) << "the widest item that can not be narrowed";
}

} // namespace karvo
