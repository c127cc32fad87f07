// The lists: their columns, what a screen reader is told of them, and which row is chosen.
#include "ui/fixed_width_list.h"
#include "ui/tabbed_list.h"

#include <QFontMetrics>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

std::string spoken(const QListWidgetItem* item)
{
    return item->data(Qt::AccessibleTextRole).toString().toStdString();
}

struct FixedWidthListTest : testing::Test {
    FixedWidthListTest() { list.setRows(rows); }
    int widthOf(const char* text) const
    {
        return QFontMetrics(list.font()).horizontalAdvance(QString::fromLatin1(text));
    }

    std::vector<FixedWidthList::Row> rows = {
        {QStringLiteral("CV1  = 3"), QStringLiteral("Erste Adresse")},
        {QStringLiteral("  1 = 3 von 255  "), QStringLiteral("Fahrstufe 1")},
        {QStringLiteral("Akkuspannung = 3,92 Volt (196)"), QString()},
    };
    FixedWidthList list;
};

TEST_F(FixedWidthListTest, KeepsTheTextsToTheLetterAndInColumns)
{
    EXPECT_EQ(list.item(1)->text().toStdString(), "  1 = 3 von 255  ");
    EXPECT_EQ(spoken(list.item(0)), "CV1  = 3, Erste Adresse");
    EXPECT_EQ(spoken(list.item(2)), "Akkuspannung = 3,92 Volt (196)");
    EXPECT_EQ(widthOf("ii..11"), widthOf("WWMM=="));
    EXPECT_GT(list.nameColumn(), widthOf("  1 = 3 von 255")) << "the longest text with a name";
    EXPECT_LT(list.nameColumn(), widthOf("Akkuspannung = 3,92 Volt (196)"));
}

TEST_F(FixedWidthListTest, KeepsTheChosenRowOfAsManyRowsAndElseChoosesNoneNorByBeingFocused)
{
    list.setCurrentRow(1);
    const QSignalSpy chosen(&list, &QListWidget::currentRowChanged);
    rows[1].text = QStringLiteral("  1 = 4 von 255  ");
    list.updateRows(rows);
    EXPECT_EQ(list.currentRow(), 1);
    EXPECT_EQ(list.currentItem()->text().toStdString(), "  1 = 4 von 255  ");
    list.setRows(rows);
    EXPECT_EQ(list.currentRow(), -1);
    EXPECT_EQ(chosen.count(), 0);
    list.setCurrentRow(2);
    EXPECT_EQ(chosen.count(), 1);
    rows.pop_back();
    list.updateRows(rows);
    EXPECT_EQ(list.currentRow(), -1);
    list.show();
    list.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
    EXPECT_EQ(list.currentRow(), -1);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_TRUE(list.item(0)->isSelected());
}

TEST_F(FixedWidthListTest, TellsHowToBeginWhileItIsEmpty)
{
    const QString hint = QStringLiteral("So beginnen Sie");
    list.setEmptyHint(hint);
    EXPECT_EQ(list.accessibleDescription().toStdString(), "");
    list.setRows({});
    list.setEmptyHint({});
    const QImage blank = list.grab().toImage();
    list.setEmptyHint(hint);
    EXPECT_EQ(list.accessibleDescription(), hint);
    EXPECT_NE(list.grab().toImage(), blank) << "the hint is not drawn";
}

TEST(TabbedList, PutsThePartsOfAllLinesIntoTheSameColumns)
{
    TabbedList list;
    list.setLines({{QStringLiteral("CV1 = 3\t4"), QStringLiteral("different\tAddress"), true},
                   {QStringLiteral("  28  (CV70) = 200\t---"), QStringLiteral("only left\tStep"), false}});
    EXPECT_EQ(list.item(0)->text().toStdString(), "CV1 = 3\t4") << "to the letter";
    EXPECT_EQ(spoken(list.item(1)), "  28  (CV70) = 200, ---, only left, Step");
    const auto columns = list.columns();
    ASSERT_EQ(columns.size(), 5U); // the four, and the end of the last
    QFont font = list.font();
    font.setBold(true);
    EXPECT_GT(columns[1], QFontMetrics(font).horizontalAdvance(QStringLiteral("  28  (CV70) = 200")))
        << "the second column begins behind the widest first part";
    EXPECT_GE(list.sizeHintForColumn(0), columns[3]);
    font.setPointSizeF(2 * font.pointSizeF());
    list.setFont(font);
    EXPECT_GT(list.columns()[1], columns[1]);

    list.appendText(QStringLiteral("Values: CV1 = 3\r\nCV2 = 3"));
    EXPECT_EQ(list.currentRow(), 2) << "in view";
    EXPECT_GE(list.sizeHintForRow(2), 2 * QFontMetrics(list.font()).height());
}

} // namespace
} // namespace karvo
