#include "platform/port_map.h"

#include "platform/text_conversion.h"
#include "support/memory_files.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

// What a system lists, without asking one.
PortSystem systemWith(PortNaming naming, const std::vector<const char*>& locations)
{
    std::vector<SystemPort> ports;
    for (const char* const location : locations)
        ports.push_back({text(location), text(location).section(QLatin1Char('/'), -1), {}});
    return {naming, [ports] { return ports; }};
}

TEST(PortMap, ThisRunComesBeforeTheSettingsAndTheseBeforeTheTable)
{
    test::MemorySettings settings;
    settings.values = {
        {"Ports/COM5", u" /dev/stored "}, {"Ports/COM6", u"/dev/stored6"}, {"Ports/COM7", u"  "}};
    const std::vector<PortMapping> given{{5, text("/dev/first")}, {5, text("COM40")}};
    const std::tuple<int, const char*, const char*> expected[] = {
        {1, "/dev/ttyS0", "COM1"},           {4, "/dev/ttyS3", "COM4"},     {5, "COM40", "COM40"},
        {6, "/dev/stored6", "/dev/stored6"}, {7, "/dev/ttyUSB2", "COM7"},   {12, "/dev/ttyUSB7", "COM12"},
        {13, "/dev/ttyACM0", "COM13"},       {20, "/dev/ttyACM7", "COM20"}, {31, "/dev/COM31", "COM31"}};
    const PortMap onUnix(settings, given, systemWith(PortNaming::unixDevices, {}));
    const PortMap onWindows(settings, given, systemWith(PortNaming::windows, {}));
    for (const auto& [number, unixName, windowsName] : expected) {
        EXPECT_EQ(onUnix.device(number).toStdString(), unixName) << number;
        EXPECT_EQ(onWindows.device(number).toStdString(), windowsName) << number;
    }
    EXPECT_EQ(PortMap(settings).device(5).toStdString(), "/dev/stored");
}

TEST(PortMap, TellsWhatIsPluggedInAndOffersNumbersForTheRest)
{
    const test::ScratchFolder scratch;
    std::filesystem::create_symlink("/dev/null", scratch.path() / "by-id");
    test::MemorySettings settings;
    settings.save("Ports", "COM30", u"COM99");
    const struct {
        PortNaming naming;
        std::vector<const char*> ports;
        std::vector<PortMapping> given;
        std::string present;
        std::string fresh;
    } cases[] = {
        {PortNaming::windows,
         {"COM3", "COM31", "COM40", "COM41", "COM42"},
         {{7, text("com40")}, {28, text("COM50")}},
         "3 7 31 ",
         "29 COM41 27 COM42 "}, // COM30 and COM28 are mapped, COM31 is there
        {PortNaming::unixDevices,
         {"/dev/ttyUSB0", "/dev/ttyAMA0"},
         {{9, pathToQString(scratch.path() / "by-id")}, {10, pathToQString(scratch.path() / "none")}},
         "5 9 ",
         "31 /dev/ttyAMA0 "},
    };
    for (const auto& [naming, ports, given, present, fresh] : cases) {
        const PortMap map(settings, given, systemWith(naming, ports));
        const auto descriptions = map.describePorts();
        ASSERT_EQ(descriptions.size(), 31U);
        std::string found;
        for (std::size_t i = 0; i < descriptions.size(); ++i)
            found += descriptions[i].isPresent ? std::to_string(i + 1) + " " : "";
        EXPECT_EQ(found, present);
        std::string offered;
        for (const NewPort& port : map.newPorts())
            offered += std::to_string(port.number) + " " + port.device.toStdString() + " ";
        EXPECT_EQ(offered, fresh);
    }
}

TEST(PortMapping, TakesANameAndADeviceOrSaysWhatIsWrong)
{
    const std::tuple<const char*, int, const char*> taken[] = {{"COM5=/dev/ttyUSB0", 5, "/dev/ttyUSB0"},
                                                               {"com31=/dev/pts/3", 31, "/dev/pts/3"},
                                                               {" COM1 = /dev/a=b ", 1, "/dev/a=b"}};
    for (const auto& [argument, number, device] : taken) {
        const auto parsed = parsePortMapping(text(argument));
        EXPECT_EQ(parsed.error, PortMappingError::none) << argument;
        EXPECT_EQ(parsed.mapping.number, number) << argument;
        EXPECT_EQ(parsed.mapping.device.toStdString(), device);
    }
    const std::pair<PortMappingError, std::vector<const char*>> refused[] = {
        {PortMappingError::noEqualsSign, {"", "COM5", "/dev/ttyUSB0"}},
        {PortMappingError::noPortName, {"=/dev/x", "COM0=/dev/x", "COM32=/dev/x", "COM05=/dev/x"}},
        {PortMappingError::noPortName, {"5=/dev/x", "COM-1=/dev/x"}},
        {PortMappingError::noDevice, {"COM5=", "COM5=  "}}};
    for (const auto& [error, arguments] : refused) {
        for (const char* const argument : arguments)
            EXPECT_EQ(parsePortMapping(text(argument)).error, error) << argument;
    }
}

} // namespace
} // namespace karvo
