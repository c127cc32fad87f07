#include "ui/fixed_width_list.h"

#include <QFontMetrics>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

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
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.item(1)->text().toStdString(), "  1 = 3 von 255  ");
    EXPECT_EQ(list.item(0)->data(Qt::AccessibleTextRole).toString().toStdString(), "CV1  = 3, Erste Adresse");
    EXPECT_EQ(list.item(2)->data(Qt::AccessibleTextRole).toString().toStdString(),
              "Akkuspannung = 3,92 Volt (196)");
    EXPECT_EQ(widthOf("ii..11"), widthOf("WWMM=="));
    EXPECT_EQ(widthOf("CV1  = "), widthOf("CV11 = "));
    EXPECT_GT(list.nameColumn(), widthOf("  1 = 3 von 255")) << "the longest text with a name";
    EXPECT_LT(list.nameColumn(), widthOf("Akkuspannung = 3,92 Volt (196)"));
}

TEST_F(FixedWidthListTest, KeepsTheChosenRowOfAsManyRowsAndElseChoosesNone)
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
}

TEST_F(FixedWidthListTest, ChoosesNothingByBeingFocused)
{
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

} // namespace
} // namespace karvo
