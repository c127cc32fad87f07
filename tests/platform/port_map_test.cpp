#include "platform/port_map.h"

#include "platform/qt_settings.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace karvo
{

namespace
{

class PortMapTest : public testing::Test
{
protected:
    QTemporaryDir folder_;
    QtSettings settings_{folder_.filePath(QStringLiteral("Karvo.conf"))};
};

#ifdef Q_OS_WIN

TEST_F(PortMapTest, EveryNumberIsTheNameOfItsDevice)
{
    settings_.save("Ports", "COM5", u"COM7");
    const PortMap map(settings_, {{6, QStringLiteral("COM8")}});
    EXPECT_EQ(map.device(5), QStringLiteral("COM5"));
    EXPECT_EQ(map.device(6), QStringLiteral("COM6"));
    EXPECT_EQ(map.device(31), QStringLiteral("COM31"));
}

#else

TEST_F(PortMapTest, TheFixedTableStandsBehindEverything)
{
    const PortMap map(settings_);
    const std::vector<std::pair<int, const char*>> expected{
        {1, "/dev/ttyS0"},    {4, "/dev/ttyS3"},    {5, "/dev/ttyUSB0"}, {12, "/dev/ttyUSB7"},
        {13, "/dev/ttyACM0"}, {20, "/dev/ttyACM7"}, {21, "/dev/COM21"},  {31, "/dev/COM31"},
    };
    for (const auto& [number, device] : expected)
        EXPECT_EQ(map.device(number).toStdString(), device) << number;
}

TEST_F(PortMapTest, TheMappingOfThisRunComesBeforeTheSettings)
{
    settings_.save("Ports", "COM5", u" /dev/stored ");
    settings_.save("Ports", "COM6", u"/dev/stored6");
    settings_.save("Ports", "COM7", u"  ");
    const PortMap map(settings_, {{5, QStringLiteral("/dev/first")}, {5, QStringLiteral("/dev/last")}});
    EXPECT_EQ(map.device(5).toStdString(), "/dev/last");
    EXPECT_EQ(map.device(6).toStdString(), "/dev/stored6");
    EXPECT_EQ(map.device(7).toStdString(), "/dev/ttyUSB2") << "an empty value is none";
    EXPECT_EQ(PortMap(settings_).device(5).toStdString(), "/dev/stored");
}

TEST_F(PortMapTest, DescribesAllPortsInTheirOrder)
{
    const PortMap map(settings_, {{2, QStringLiteral("/dev/nothing-here")}});
    const auto descriptions = map.describePorts();
    ASSERT_EQ(descriptions.size(), 31U);
    EXPECT_EQ(descriptions[0].device.toStdString(), "/dev/ttyS0");
    EXPECT_EQ(descriptions[1].device.toStdString(), "/dev/nothing-here");
    EXPECT_EQ(descriptions[1].description.toStdString(), "");
    EXPECT_EQ(descriptions[30].device.toStdString(), "/dev/COM31");
}

#endif

TEST(PortMapping, TakesANameAndADevice)
{
    const std::vector<std::tuple<const char*, int, const char*>> cases{
        {"COM5=/dev/ttyUSB0", 5, "/dev/ttyUSB0"},
        {"com31=/dev/pts/3", 31, "/dev/pts/3"},
        {" COM1 = /dev/a=b ", 1, "/dev/a=b"},
    };
    for (const auto& [argument, number, device] : cases) {
        const auto parsed = parsePortMapping(QString::fromUtf8(argument));
        EXPECT_EQ(parsed.error, PortMappingError::none) << argument;
        EXPECT_EQ(parsed.mapping.number, number) << argument;
        EXPECT_EQ(parsed.mapping.device.toStdString(), device) << argument;
    }
}

TEST(PortMapping, SaysWhatIsWrong)
{
    const std::vector<std::pair<const char*, PortMappingError>> cases{
        {"", PortMappingError::noEqualsSign},
        {"COM5", PortMappingError::noEqualsSign},
        {"/dev/ttyUSB0", PortMappingError::noEqualsSign},
        {"=/dev/ttyUSB0", PortMappingError::noPortName},
        {"COM0=/dev/x", PortMappingError::noPortName},
        {"COM32=/dev/x", PortMappingError::noPortName},
        {"COM05=/dev/x", PortMappingError::noPortName},
        {"5=/dev/x", PortMappingError::noPortName},
        {"COM-1=/dev/x", PortMappingError::noPortName},
        {"COM5=", PortMappingError::noDevice},
        {"COM5=  ", PortMappingError::noDevice},
    };
    for (const auto& [argument, error] : cases)
        EXPECT_EQ(parsePortMapping(QString::fromUtf8(argument)).error, error) << argument;
}

} // namespace

} // namespace karvo
