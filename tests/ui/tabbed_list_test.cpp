#include "ui/tabbed_list.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(TabbedList, PutsThePartsOfAllLinesIntoTheSameColumns)
{
    TabbedList list;
    list.setEmptyHint(QStringLiteral("Open a list"));
    EXPECT_EQ(list.accessibleDescription().toStdString(), "Open a list");
    list.setLines({{QStringLiteral("CV1 = 3\t4"), QStringLiteral("different\tAddress"), true},
                   {QStringLiteral("  28  (CV70) = 200\t---"), QStringLiteral("only left\tStep"), false}});
    EXPECT_EQ(list.item(0)->text().toStdString(), "CV1 = 3\t4") << "to the letter";
    EXPECT_EQ(list.item(1)->data(Qt::AccessibleTextRole).toString().toStdString(),
              "  28  (CV70) = 200, ---, only left, Step");
    EXPECT_EQ(list.currentRow(), -1);
    const auto columns = list.columns();
    ASSERT_EQ(columns.size(), 5U); // the four, and the end of the last
    EXPECT_EQ(columns[0], 0);
    QFont bold = list.font();
    bold.setBold(true);
    EXPECT_GT(columns[1], QFontMetrics(bold).horizontalAdvance(QStringLiteral("  28  (CV70) = 200")))
        << "the second column begins behind the widest first part";
    EXPECT_GE(list.sizeHintForColumn(0), columns[3]);
    QFont larger = list.font();
    larger.setPointSizeF(2 * larger.pointSizeF());
    list.setFont(larger);
    EXPECT_GT(list.columns()[1], columns[1]);

    list.appendText(QStringLiteral("Values: CV1 = 3\r\nCV2 = 3"));
    EXPECT_EQ(list.currentRow(), 2) << "in view";
    EXPECT_GE(list.sizeHintForRow(2), 2 * QFontMetrics(list.font()).height());
    list.setLines({});
    EXPECT_EQ(list.count(), 0);
}

} // namespace karvo
