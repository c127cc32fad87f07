#include "platform/qt_settings.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace karvo
{

namespace
{

class QtSettingsTest : public testing::Test
{
protected:
    QString path() const { return folder_.filePath(QStringLiteral("Karvo.conf")); }

    void write(const QByteArray& content) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

private:
    QTemporaryDir folder_;
};

TEST_F(QtSettingsTest, TheFiveParametersOutliveTheProgram)
{
    const std::vector<std::pair<std::string_view, Text>> parameters{
        {"Language", u"3"},
        {"Com_Port", u"31"},
        {"ATMELpath", u"C:\\Firmware\\K\u00E4fer; neu, \"gut\" 100 %"},
        {"Location", u""},
        {"Expert", u"0"},
    };
    {
        QtSettings settings(path());
        for (const auto& [key, value] : parameters)
            settings.save("Parameter", key, u"before");
        for (const auto& [key, value] : parameters)
            settings.save("Parameter", key, value);
        EXPECT_EQ(settings.unwritablePlace(), std::nullopt);
    }
    const QtSettings settings(path());
    for (const auto& [key, value] : parameters)
        EXPECT_EQ(settings.get("Parameter", key), value) << key;
    EXPECT_EQ(settings.get("Ports", "Language"), std::nullopt);
}

TEST_F(QtSettingsTest, WhatSomebodyTypedIntoTheFileIsReadAsText)
{
    write(
        "[Parameter]\nCom_Port=5\nATMELpath=/home/me/old, new\nLanguage=\"@\"\n[Ports]\nCOM5=/dev/ttyUSB3\n");
    const QtSettings settings(path());
    EXPECT_EQ(settings.get("Parameter", "Com_Port"), Text(u"5"));
    EXPECT_EQ(settings.get("Parameter", "ATMELpath"), Text(u"/home/me/old, new"));
    EXPECT_EQ(settings.get("Parameter", "Language"), Text(u"@"));
    EXPECT_EQ(settings.get("Ports", "COM5"), Text(u"/dev/ttyUSB3"));
}

TEST_F(QtSettingsTest, TellsWhereNothingCanBeStored)
{
    write("x");
    const QString place = path() + QStringLiteral("/Karvo.conf"); // below a file
    QtSettings settings(place);
    settings.save("Parameter", "Language", u"1");
    const auto told = settings.unwritablePlace();
    ASSERT_TRUE(told);
    EXPECT_EQ(QString::fromStdU16String(*told), place);
}

TEST_F(QtSettingsTest, AFileThatIsNoneGivesNothing)
{
    write(QByteArray("\x7F"
                     "ELF\x02\x01\0\0\xFF\xFE[Parameter\nLanguage",
                     28));
    EXPECT_EQ(QtSettings(path()).get("Parameter", "Language"), std::nullopt);
}

} // namespace

} // namespace karvo
