// The windows' small parts: rows of controls, check boxes over several lines, captions, Qt's own words.
#include "ui/captions.h"
#include "ui/flow_layout.h"
#include "ui/qt_texts.h"
#include "ui/wrapping_check_box.h"

#include <QTest>

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
    EXPECT_EQ(placeOf(2), QRect(180, 0, 80, 30));
    EXPECT_EQ(flow.heightForWidth(260), 30);
    flow.setGeometry(QRect(0, 0, 259, 100));
    EXPECT_EQ(placeOf(2).x(), 0);
    EXPECT_GE(placeOf(2).y(), 30);
    EXPECT_EQ(flow.heightForWidth(259), placeOf(2).y() + 30);
    flow.setGeometry(QRect(0, 0, 50, 200));
    EXPECT_EQ(placeOf(0).width(), 50);
    flow.addItem(new QSpacerItem(20, 5, QSizePolicy::Minimum));
    EXPECT_EQ(flow.minimumSize().width(), 20) << "the widest item that can not be narrowed";
}

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
}

TEST(Captions, KeepAnAmpersandAndPutValuesInTheirPlaces)
{
    EXPECT_EQ(buttonText(u"Bremsen & Beschleunigen").toStdString(), "Bremsen && Beschleunigen");
    LanguageTables texts;
    texts.captions[27] = u"0027Byte {1} von {2}\tnur im Tipp {1}";
    EXPECT_EQ(filledCaption(texts, Caption::bytesReceived, {u"12", u"513"}).toStdString(), "Byte 12 von 513");
}

TEST(QtTexts, FollowTheLanguage)
{
    const QString systemWords = qt_error_string(2);
    QtTexts texts(KARVO_PROGRAM_FOLDER);
    const std::pair<LanguageCode, const char*> cases[] = {{LanguageCode::german, "Abbrechen"},
                                                          {LanguageCode::french, "Annuler"},
                                                          {LanguageCode::english, "Cancel"}};
    for (const auto& [code, cancel] : cases) {
        texts.use(code);
        EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel").toStdString(), cancel);
        EXPECT_EQ(qt_error_string(2), systemWords);
    }
}

} // namespace karvo
