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

// What a system lists, without asking one.
PortSystem systemWith(PortNaming naming, std::vector<SystemPort> ports)
{
    return {naming, [ports = std::move(ports)] { return ports; }};
}

TEST_F(PortMapTest, ThisRunComesBeforeTheSettingsAndTheseBeforeTheTable)
{
    settings_.save("Ports", "COM5", u" /dev/stored ");
    settings_.save("Ports", "COM6", u"/dev/stored6");
    settings_.save("Ports", "COM7", u"  ");
    const std::vector<PortMapping> given{{5, QStringLiteral("/dev/first")}, {5, QStringLiteral("COM40")}};
    const std::tuple<int, const char*, const char*> expected[] = {
        {1, "/dev/ttyS0", "COM1"},           {4, "/dev/ttyS3", "COM4"},     {5, "COM40", "COM40"},
        {6, "/dev/stored6", "/dev/stored6"}, {7, "/dev/ttyUSB2", "COM7"},   {12, "/dev/ttyUSB7", "COM12"},
        {13, "/dev/ttyACM0", "COM13"},       {20, "/dev/ttyACM7", "COM20"}, {31, "/dev/COM31", "COM31"}};
    const PortMap onUnix(settings_, given, systemWith(PortNaming::unixDevices, {}));
    const PortMap onWindows(settings_, given, systemWith(PortNaming::windows, {}));
    for (const auto& [number, unixName, windowsName] : expected) {
        EXPECT_EQ(onUnix.device(number).toStdString(), unixName) << number;
        EXPECT_EQ(onWindows.device(number).toStdString(), windowsName) << number;
    }
    EXPECT_EQ(PortMap(settings_).device(5).toStdString(), "/dev/stored");
}

TEST_F(PortMapTest, TellsWhatIsPluggedInAndOffersNumbersForTheRest)
{
    const QString link = folder_.filePath(QStringLiteral("by-id"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), link));
    settings_.save("Ports", "COM30", u"COM99");
    const struct {
        PortNaming naming;
        std::vector<SystemPort> ports;
        std::vector<PortMapping> given;
        std::vector<int> present;
        std::vector<std::pair<int, const char*>> fresh;
    } cases[] = {
        {PortNaming::windows,
         {{QStringLiteral("COM3"), QStringLiteral("COM3"), QStringLiteral("built in")},
          {QStringLiteral("COM31"), QStringLiteral("COM31"), {}},
          {QStringLiteral("COM40"), QStringLiteral("COM40"), QStringLiteral("USB")},
          {QStringLiteral("COM41"), QStringLiteral("COM41"), {}},
          {QStringLiteral("COM42"), QStringLiteral("COM42"), {}}},
         {{7, QStringLiteral("com40")}, {28, QStringLiteral("COM50")}},
         {3, 7, 31},
         {{29, "COM41"}, {27, "COM42"}}}, // COM30 and COM28 are mapped, COM31 is there
        {PortNaming::unixDevices,
         {{QStringLiteral("/dev/ttyUSB0"), QStringLiteral("ttyUSB0"), {}},
          {QStringLiteral("/dev/ttyAMA0"), QStringLiteral("ttyAMA0"), {}}},
         {{9, link}, {10, folder_.filePath(QStringLiteral("none"))}},
         {5, 9},
         {{31, "/dev/ttyAMA0"}}},
    };
    for (const auto& [naming, ports, given, present, fresh] : cases) {
        const PortMap map(settings_, given, systemWith(naming, ports));
        const auto descriptions = map.describePorts();
        ASSERT_EQ(descriptions.size(), 31U);
        std::vector<int> found;
        for (std::size_t i = 0; i < descriptions.size(); ++i) {
            if (descriptions[i].isPresent)
                found.push_back(static_cast<int>(i) + 1);
        }
        EXPECT_EQ(found, present);
        std::vector<std::pair<int, std::string>> offered;
        for (const NewPort& port : map.newPorts())
            offered.emplace_back(port.number, port.device.toStdString());
        EXPECT_EQ(offered, (std::vector<std::pair<int, std::string>>(fresh.begin(), fresh.end())));
    }
}

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
