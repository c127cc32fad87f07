// The smaller seams to the system: ports, settings, the locale, the time, strings, waiting, staying awake.
#include "platform/port_map.h"
#include "platform/qt_clock.h"
#include "platform/qt_locale_info.h"
#include "platform/qt_settings.h"
#include "platform/qt_wait.h"
#include "platform/system_stay_awake.h"
#include "platform/text_conversion.h"
#include "support/case_table.h"
#include "support/memory_files.h"
#include "support/scratch_folder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

// What a system lists, without asking one.
PortSystem systemWith(PortNaming naming, const std::vector<const char*>& locations)
{
    std::vector<SystemPort> ports;
    for (const char* const location : locations)
        ports.push_back({text(location), text(location).section(QLatin1Char('/'), -1), text("Kabel"),
                         UsbIds{0x0403, 0xEA60}});
    return {naming, [ports] { return ports; }};
}

TEST(PortMap, ThisRunComesBeforeTheSettingsAndTheseBeforeTheTable)
{
    test::MemorySettings settings;
    settings.values = {{"Ports/COM5", u"/dev/x"}, {"Ports/COM6", u" /dev/stored "}, {"Ports/COM7", u"  "}};
    const std::vector<PortMapping> given{{5, text("/dev/first")}, {5, text("COM40")}};
    const PortMap onUnix(settings, given, systemWith(PortNaming::unixDevices, {}));
    const PortMap onWindows(settings, given, systemWith(PortNaming::windows, {}));
    for (const auto& [number, unixName, windowsName] : test::casesOf<3>("platform/mapped_ports.txt")) {
        EXPECT_EQ(onUnix.device(std::stoi(number)).toStdString(), unixName) << number;
        EXPECT_EQ(onWindows.device(std::stoi(number)).toStdString(), windowsName) << number;
    }
}

TEST(PortMap, TellsWhatIsPluggedInAndOffersNumbersForTheRest)
{
    const test::ScratchFolder scratch;
    scratch.write("by-id", "");
    test::MemorySettings settings;
    settings.save("Ports", "COM30", u"COM99");
    const struct {
        PortNaming naming;
        std::vector<const char*> ports;
        std::vector<PortMapping> given;
        std::string expected; // what is present, and what is offered
    } cases[] = {
        {PortNaming::windows,
         {"COM3", "COM31", "COM40", "COM41", "COM42"},
         {{7, text("com40")}, {28, text("COM50")}},
         "3 7 31 29=COM41 27=COM42 "}, // COM30 and COM28 are mapped, COM31 is there
        {PortNaming::unixDevices,
         {"/dev/ttyUSB0", "/dev/ttyAMA0"},
         {{9, pathToQString(scratch.path() / "by-id")}, {10, pathToQString(scratch.path() / "none")}},
         "5 9 31=/dev/ttyAMA0 "},
    };
    for (const auto& [naming, ports, given, expected] : cases) {
        const PortMap map(settings, given, systemWith(naming, ports));
        const auto descriptions = map.describePorts();
        ASSERT_EQ(descriptions.size(), 31U);
        std::string told;
        for (std::size_t i = 0; i < descriptions.size(); ++i)
            told += descriptions[i].isPresent ? std::to_string(i + 1) + " " : "";
        for (const NewPort& port : map.newPorts())
            told += std::to_string(port.number) + "=" + port.device.toStdString() + " ";
        EXPECT_EQ(map.newPorts().front().description, text("Kabel (USB 0403:ea60)"));
        EXPECT_EQ(told, expected);
    }
}

TEST(PortMapping, TakesANameAndADeviceOrSaysWhatIsWrong)
{
    const std::string errors[] = {"", "no equals sign", "no port name", "no device"};
    for (const auto& [typed, taken] : test::casesOf<2>("platform/port_mappings.txt")) {
        const auto [mapping, error] = parsePortMapping(text(typed.c_str()));
        const bool isSound = error == PortMappingError::none;
        EXPECT_EQ(isSound ? std::to_string(mapping.number) + " " + mapping.device.toStdString()
                          : errors[static_cast<int>(error)],
                  taken)
            << typed;
    }
}

TEST(QtSettings, KeepTheirTextsAndReadWhatSomebodyTyped)
{
    const test::ScratchFolder scratch;
    const QString path = pathToQString(scratch.path() / "Karvo.conf");
    const Text difficult = u"C:\\Firmware\\K\u00E4fer; neu, \"gut\" 100 %";
    scratch.write("Karvo.conf", "[Parameter]\nCom_Port=5\nATMELpath=/home/me/old, new\nLanguage=\"@\"\n");
    {
        QtSettings settings(path);
        EXPECT_EQ(settings.get("Parameter", "Com_Port"), u"5");
        EXPECT_EQ(settings.get("Parameter", "ATMELpath"), u"/home/me/old, new");
        EXPECT_EQ(settings.get("Parameter", "Language"), u"@");
        settings.save("Parameter", "ATMELpath", difficult);
        settings.save("Parameter", "Location", u"");
        EXPECT_EQ(settings.unwritablePlace(), std::nullopt);
    }
    EXPECT_EQ(QtSettings(path).get("Parameter", "ATMELpath"), difficult);
    EXPECT_EQ(QtSettings(path).get("Parameter", "Location"), u"");
    EXPECT_EQ(QtSettings(path).get("Ports", "Language"), std::nullopt);

    scratch.write("Karvo.conf", std::string("\x7F"
                                            "ELF\x02\x01\0\0\xFF\xFE[Parameter\nLanguage",
                                            28));
    EXPECT_EQ(QtSettings(path).get("Parameter", "Language"), std::nullopt);
    const QString belowAFile = path + QStringLiteral("/Karvo.conf");
    QtSettings settings(belowAFile);
    settings.save("Parameter", "Language", u"1");
    EXPECT_EQ(settings.unwritablePlace(), toText(QDir::toNativeSeparators(belowAFile)));
}

TEST(QtLocaleInfo, CountriesHaveTheirThreeLetters)
{
    std::string letters;
    for (const auto territory :
         {QLocale::Germany, QLocale::Austria, QLocale::Switzerland, QLocale::Netherlands,
          QLocale::UnitedKingdom, QLocale::UnitedStates, QLocale::NewZealand, QLocale::Spain, QLocale::Chile,
          QLocale::Japan, QLocale::AnyTerritory, QLocale::Belgium})
        letters += utf8FromText(Text(countryAbbreviation(territory))) + " ";
    EXPECT_EQ(letters, "DEU AUT CHE NLD GBR USA NZL ESP CHL   BEL ");
}

TEST(TextConversion, CarriesEveryCharacterAndPathBothWays)
{
    const Text ours = u"Gr\u00FC\u00DFe \u20AC \u0081\u009D \u4E2D \U0001F697";
    const QString theirs = text("Grüße € \xC2\x81\xC2\x9D 中 🚗");
    EXPECT_EQ(toQString(ours), theirs);
    EXPECT_EQ(toText(theirs), ours);
    const QString path = text("/tmp/Fahrzeuge/Müller & Söhne/€.kvr");
    EXPECT_EQ(pathToQString(toPath(path)), path);
    EXPECT_EQ(toPath(path).extension(), ".kvr");
}

TEST(QtClock, TellsTheLocalTime)
{
    const DateTime now = QtClock().now();
    const QDateTime told({now.year, now.month, now.day}, {now.hour, now.minute, now.second});
    EXPECT_LE(std::abs(told.secsTo(QDateTime::currentDateTime())), 1);
}

const auto never = [] { return false; };

// Events run meanwhile, of which only a wake sets off another look.
TEST(QtWait, TestsTheConditionAtOnceWhenWokenAndAtTheLimit)
{
    QtWait wait;
    wait.wake(); // without a wait it leaves nothing behind
    bool anyEvent = false;
    QTimer::singleShot(0ms, &wait, [&] { anyEvent = true; });
    EXPECT_EQ(wait.until([] { return true; }, 5s), WaitResult::met);
    EXPECT_FALSE(anyEvent);
    for (const auto& [last, limit, end] :
         {std::tuple{2, 5000ms, WaitResult::met}, {4, 60ms, WaitResult::timedOut}}) {
        QTimer::singleShot(10ms, &wait, [&] {
            wait.wake();
            wait.wake();
        });
        int tests = 0;
        QElapsedTimer clock;
        clock.start();
        EXPECT_EQ(wait.until([&] { return ++tests == last; }, limit), end);
        EXPECT_EQ(tests, end == WaitResult::met ? 2 : 3);
        EXPECT_GE(clock.elapsed(), end == WaitResult::met ? 9 : 59);
        EXPECT_LT(clock.elapsed(), 1000);
    }
    const auto wakesItself = [&] {
        wait.wake();
        return false;
    };
    EXPECT_EQ(wait.until(wakesItself, 50ms), WaitResult::timedOut) << "it must not hold events up";
}

TEST(QtWait, TheEndOfTheProgramEndsThisWaitAndAllLaterOnesWhateverHolds)
{
    QtWait wait;
    EXPECT_FALSE(wait.ended());
    QTimer::singleShot(10ms, &wait, [&] { wait.endProgram(); });
    EXPECT_EQ(wait.until(never, 5s), WaitResult::ended);
    EXPECT_EQ(wait.pause(5s), WaitResult::ended);
    EXPECT_TRUE(wait.ended());
    QtWait another;
    const auto ends = [&] {
        another.endProgram();
        return true;
    };
    EXPECT_EQ(another.until(ends, 5s), WaitResult::ended);
}

TEST(QtWaitDeathTest, NestsNowhereAndEndsWithTheApplication)
{
    QtWait wait;
    const auto condition = [&] { return wait.until(never, 10ms) == WaitResult::ended; };
#ifdef QT_NO_DEBUG
    EXPECT_EQ(wait.until(condition, 5s), WaitResult::met);
#else
    EXPECT_DEATH(wait.until(condition, 5s), "a wait inside a wait");
#endif
    // In a process of its own: no loop runs any more in an application that was told to quit.
    const auto endsAtOnce = [&] {
        QTimer::singleShot(10ms, &wait, [] { QCoreApplication::exit(0); });
        return wait.until(never, 5s) == WaitResult::ended && wait.ended();
    };
    EXPECT_EXIT(std::exit(endsAtOnce() ? 0 : 1), testing::ExitedWithCode(0), "");
}

#ifndef Q_OS_WIN
// Each locale in a process of its own: Qt asks the system once.
TEST(QtLocaleInfoDeathTest, FollowsTheLocaleOfTheUser)
{
    for (const auto& [locale, abbreviation] : {std::pair{"nl_BE.UTF-8", u"BEL"}, {"C", u""}}) {
        const auto answersAsExpected = [&] {
            qputenv("LC_ALL", locale);
            return QtLocaleInfo().countryAbbreviation() == abbreviation;
        };
        EXPECT_EXIT(std::exit(answersAsExpected() ? 0 : 1), testing::ExitedWithCode(0), "") << locale;
    }
}

TEST(SystemStayAwake, HoldsTheSystemsLockFromBeginToEnd)
{
    const test::ScratchFolder folder;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray(folder.path().c_str()) + ':' + path);
    // Stands for the system's: writes down how it was called, and does as it is told until that ends.
    const auto program = folder.write("systemd-inhibit", "#!/bin/sh\n"
                                                         "echo \"$@\" > \"${0%/*}/called\"\n"
                                                         "shift 3; \"$@\"\n"
                                                         "echo ended >> \"${0%/*}/called\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    folder.write("called", "");
    SystemStayAwake awake;
    awake.begin(u"writing");
    for (int i = 0; i < 200 && folder.read("called").empty(); ++i)
        QThread::msleep(20);
    awake.end();
    EXPECT_EQ(folder.read("called"), "--what=sleep:idle --who=Karvo --why=writing cat\nended\n");

    qputenv("PATH", QByteArray(folder.path().c_str()) + "/none");
    awake.begin(u"without the program nothing happens");
    awake.end();
    qputenv("PATH", path);
}
#endif

} // namespace
} // namespace karvo
