#include "ui/wrapping_check_box.h"

#include <QTest>

#include <gtest/gtest.h>

namespace karvo
{

TEST(WrappingCheckBox, GrowsInHeightInsteadOfWidth)
{
    WrappingCheckBox box;
    box.setText(
        QStringLiteral("128  Der Warnblinker geht an, sobald das Fahrzeug länger als zwei Minuten steht"));
    const int oneLine = box.heightForWidth(2000);
    EXPECT_GE(box.heightForWidth(200), 3 * box.fontMetrics().height());
    EXPECT_LT(oneLine, 2 * box.fontMetrics().height());
    EXPECT_LT(box.minimumSizeHint().width(), 250);
}

TEST(WrappingCheckBox, TogglesOnAClickAnywhere)
{
    WrappingCheckBox box;
    box.setText(QStringLiteral("8  Blinker\nzweite Zeile"));
    box.resize(200, box.heightForWidth(200));
    box.show();
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(190, box.height() - 2));
    EXPECT_TRUE(box.isChecked());
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_FALSE(box.isChecked());
}

TEST(WrappingCheckBox, DrawsItsStateAndItsText)
{
    WrappingCheckBox box;
    box.resize(200, 40);
    box.setText(QStringLiteral("8"));
    const QImage off = box.grab().toImage();
    box.setChecked(true);
    const QImage on = box.grab().toImage();
    EXPECT_NE(off, on);
    box.setText(QStringLiteral("8  Blinker"));
    EXPECT_NE(box.grab().toImage(), on);
}

} // namespace karvo
