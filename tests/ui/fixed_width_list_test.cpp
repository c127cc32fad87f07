#include "ui/fixed_width_list.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace karvo
{

namespace
{

const std::vector<FixedWidthList::Row> rows = {
    {QStringLiteral("CV1  = 3"), QStringLiteral("Erste Adresse")},
    {QStringLiteral("  1 = 3 von 255  "), QStringLiteral("Fahrstufe 1")},
    {QStringLiteral("Akkuspannung = 3,92 Volt (196)"), QString()},
};

} // namespace

TEST(FixedWidthList, KeepsTheTextsToTheLetter)
{
    FixedWidthList list;
    list.setRows(rows);
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.item(0)->text().toStdString(), "CV1  = 3");
    EXPECT_EQ(list.item(1)->text().toStdString(), "  1 = 3 von 255  ");
    EXPECT_EQ(list.item(0)->data(Qt::AccessibleTextRole).toString().toStdString(), "CV1  = 3, Erste Adresse");
    EXPECT_EQ(list.item(2)->data(Qt::AccessibleTextRole).toString().toStdString(),
              "Akkuspannung = 3,92 Volt (196)");
}

TEST(FixedWidthList, LinesUpTheEqualsSigns)
{
    FixedWidthList list;
    list.setRows(rows);
    const QFontMetrics metrics(list.font());
    EXPECT_EQ(metrics.horizontalAdvance(QStringLiteral("ii..11")),
              metrics.horizontalAdvance(QStringLiteral("WWMM==")));
    EXPECT_EQ(metrics.horizontalAdvance(QStringLiteral("CV1  = ")),
              metrics.horizontalAdvance(QStringLiteral("CV11 = ")));
}

TEST(FixedWidthList, PlacesNamesBehindTheLongestNamedText)
{
    FixedWidthList list;
    list.setRows(rows);
    const QFontMetrics metrics(list.font());
    EXPECT_GT(list.nameColumn(), metrics.horizontalAdvance(QStringLiteral("  1 = 3 von 255")));
    EXPECT_LT(list.nameColumn(), metrics.horizontalAdvance(QStringLiteral("Akkuspannung = 3,92 Volt (196)")));
}

TEST(FixedWidthList, UpdatesAsManyRowsInPlace)
{
    FixedWidthList list;
    list.setRows(rows);
    list.setCurrentRow(1);
    auto changed = rows;
    changed[1].text = QStringLiteral("  1 = 4 von 255  ");
    const QSignalSpy chosen(&list, &QListWidget::currentRowChanged);
    list.updateRows(changed);
    EXPECT_EQ(list.currentRow(), 1);
    EXPECT_EQ(list.currentItem()->text().toStdString(), "  1 = 4 von 255  ");
    EXPECT_TRUE(chosen.isEmpty());
    changed.pop_back();
    list.updateRows(changed);
    EXPECT_EQ(list.currentRow(), -1);
}

TEST(FixedWidthList, ReplacesRowsWithoutChoosingAny)
{
    FixedWidthList list;
    list.setRows(rows);
    list.setCurrentRow(1);
    const QSignalSpy chosen(&list, &QListWidget::currentRowChanged);
    list.setRows(rows);
    EXPECT_EQ(list.currentRow(), -1);
    EXPECT_EQ(chosen.count(), 0);
    list.setCurrentRow(2);
    EXPECT_EQ(chosen.count(), 1);
}

TEST(FixedWidthList, ChoosesNothingByBeingFocused)
{
    FixedWidthList list;
    list.setRows(rows);
    list.show();
    list.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
    EXPECT_EQ(list.currentRow(), -1);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_TRUE(list.item(0)->isSelected());
}

TEST(FixedWidthList, TellsHowToBeginWhileItIsEmpty)
{
    FixedWidthList list;
    list.resize(300, 200);
    const QImage blank = list.grab().toImage();
    list.setEmptyHint(QStringLiteral("So beginnen Sie"));
    EXPECT_EQ(list.accessibleDescription().toStdString(), "So beginnen Sie");
    EXPECT_NE(list.grab().toImage(), blank) << "the hint is not drawn";
    list.setRows(rows);
    list.setEmptyHint(QStringLiteral("So beginnen Sie"));
    EXPECT_EQ(list.accessibleDescription().toStdString(), "");
}

} // namespace karvo
