#include "ui/wrapping_check_box.h"

#include <QTest>

#include <gtest/gtest.h>

namespace karvo
{

TEST(WrappingCheckBox, GrowsInHeightAndTogglesAndShowsItAnywhere)
{
    WrappingCheckBox box;
    box.setText(
        QStringLiteral("128  Der Warnblinker geht an, sobald das Fahrzeug länger als zwei Minuten steht"));
    EXPECT_GE(box.heightForWidth(200), 3 * box.fontMetrics().height());
    EXPECT_LT(box.heightForWidth(2000), 2 * box.fontMetrics().height());
    EXPECT_LT(box.minimumSizeHint().width(), 250);
    box.resize(200, box.heightForWidth(200));
    box.show();
    const QImage off = box.grab().toImage();
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(190, box.height() - 2));
    EXPECT_TRUE(box.isChecked());
    EXPECT_NE(box.grab().toImage(), off);
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_FALSE(box.isChecked());
    box.setText(QStringLiteral("8  Blinker"));
    EXPECT_NE(box.grab().toImage(), off);
}

} // namespace karvo
