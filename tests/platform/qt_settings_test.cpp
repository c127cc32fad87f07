#include "platform/qt_settings.h"

#include "platform/text_conversion.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

class QtSettingsTest : public testing::Test
{
protected:
    test::ScratchFolder scratch_;
    QString path_ = pathToQString(scratch_.path() / "Karvo.conf");
};

TEST_F(QtSettingsTest, TheFiveParametersOutliveTheProgram)
{
    const std::pair<std::string_view, Text> parameters[] = {
        {"Language", u"3"},
        {"Com_Port", u"31"},
        {"ATMELpath", u"C:\\Firmware\\K\u00E4fer; neu, \"gut\" 100 %"},
        {"Location", u""},
        {"Expert", u"0"},
    };
    {
        QtSettings settings(path_);
        for (const auto& [key, value] : parameters) {
            settings.save("Parameter", key, u"before");
            settings.save("Parameter", key, value);
        }
        EXPECT_EQ(settings.unwritablePlace(), std::nullopt);
    }
    const QtSettings settings(path_);
    for (const auto& [key, value] : parameters)
        EXPECT_EQ(settings.get("Parameter", key), value) << key;
    EXPECT_EQ(settings.get("Ports", "Language"), std::nullopt);
}

TEST_F(QtSettingsTest, WhatSomebodyTypedIntoTheFileIsReadAsText)
{
    scratch_.write("Karvo.conf", "[Parameter]\nCom_Port=5\nATMELpath=/home/me/old, new\nLanguage=\"@\"\n"
                                 "[Ports]\nCOM5=/dev/ttyUSB3\n");
    const QtSettings settings(path_);
    EXPECT_EQ(settings.get("Parameter", "Com_Port"), u"5");
    EXPECT_EQ(settings.get("Parameter", "ATMELpath"), u"/home/me/old, new");
    EXPECT_EQ(settings.get("Parameter", "Language"), u"@");
    EXPECT_EQ(settings.get("Ports", "COM5"), u"/dev/ttyUSB3");
}

TEST_F(QtSettingsTest, AFileThatIsNoneGivesNothingAndAPlaceThatIsNoneIsTold)
{
    scratch_.write("Karvo.conf", std::string("\x7F"
                                             "ELF\x02\x01\0\0\xFF\xFE[Parameter\nLanguage",
                                             28));
    EXPECT_EQ(QtSettings(path_).get("Parameter", "Language"), std::nullopt);
    const QString belowAFile = path_ + QStringLiteral("/Karvo.conf");
    QtSettings settings(belowAFile);
    settings.save("Parameter", "Language", u"1");
    EXPECT_EQ(settings.unwritablePlace(), toText(belowAFile));
}

} // namespace
} // namespace karvo
