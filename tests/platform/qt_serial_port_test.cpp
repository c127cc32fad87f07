// The real serial class over a pseudo terminal, whose other end these tests hold.
#include "platform/qt_serial_port.h"

#include "cli/pseudo_terminal.h"
#include "platform/line_bench.h"
#include "platform/qt_settings.h"
#include "platform/text_conversion.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <numeric>
#include <thread>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

struct QtSerialPortTest : testing::Test {
    QtSerialPortTest() { plugIn(); }

    // A new device at COM5, as after plugging an adapter in.
    void plugIn()
    {
        device_.emplace();
        settings_.save("Ports", "COM5", textFromUtf8(device_->path()));
        port_.setPortNumber(5);
    }

    void pullOut() { device_.reset(); }

    // The other end sends, after some time in which events run.
    void sendLater(std::chrono::milliseconds delay, const Bytes& bytes)
    {
        QTimer::singleShot(delay, &port_, [this, bytes] { device_->write(bytes); });
    }

    QTemporaryDir folder_;
    QtSettings settings_{folder_.filePath(QStringLiteral("Karvo.conf"))};
    PortMap map_{settings_};
    QtSerialPort port_{map_};
    test::LineBench bench_{port_};
    std::optional<PseudoTerminal> device_;
};

TEST_F(QtSerialPortTest, OpensClosesAndOpensAgain)
{
    EXPECT_EQ(port_.objectName(), QStringLiteral("MSComm1"));
    EXPECT_EQ(port_.portNumber(), 5);
    for (int round = 0; round < 3; ++round) {
        EXPECT_FALSE(port_.isOpen());
        EXPECT_FALSE(port_.open());
        EXPECT_FALSE(port_.open()) << "opening an open port does nothing";
        EXPECT_TRUE(port_.isOpen());
        sendLater(0ms, {1, 2});
        EXPECT_EQ(bench_.waitForBytes(2), WaitResult::met);
        port_.close();
        EXPECT_EQ(port_.bytesWaiting(), 0U);
        EXPECT_EQ(port_.readAll(), Bytes{});
    }
}

TEST_F(QtSerialPortTest, AllByteValuesLeaveAndArriveUnchangedAndInPieces)
{
    Bytes values(256);
    std::iota(values.begin(), values.end(), std::uint8_t{0});
    ASSERT_FALSE(port_.open());
    port_.write(values);
    Bytes sent;
    for (int tries = 0; sent.size() < 256 && tries < 100; ++tries) {
        bench_.wait.pause(5ms);
        const Bytes piece = device_->read();
        sent.insert(sent.end(), piece.begin(), piece.end());
    }
    EXPECT_EQ(sent, values);

    sendLater(0ms, values);
    sendLater(20ms, Bytes(1000, 0x5A));
    sendLater(40ms, Bytes(48, 0xFF));
    EXPECT_EQ(bench_.waitForBytes(1304), WaitResult::met);
    values.insert(values.end(), 1000, 0x5A);
    values.insert(values.end(), 48, 0xFF);
    EXPECT_EQ(port_.readAll(), values);
    EXPECT_EQ(port_.bytesWaiting(), 0U);
}

TEST_F(QtSerialPortTest, BytesFromBeforeTheOpeningAreDropped)
{
    device_->write(Bytes{1, 2, 3});
    std::this_thread::sleep_for(20ms);
    ASSERT_FALSE(port_.open());
    bench_.wait.pause(30ms);
    EXPECT_EQ(port_.bytesWaiting(), 0U);
    sendLater(0ms, {'2', '7'});
    EXPECT_EQ(bench_.waitForBytes(2), WaitResult::met);
    EXPECT_EQ(port_.readAll(), (Bytes{'2', '7'}));
}

TEST_F(QtSerialPortTest, AHangUpEndsTheWaitAtOnceAndIsToldOnce)
{
    ASSERT_FALSE(port_.open());
    QTimer::singleShot(20ms, &port_, [this] { pullOut(); });
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(bench_.waitForBytes(513), WaitResult::met);
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_FALSE(port_.isOpen());
    EXPECT_EQ(bench_.notices, 1);

    const double before = test::processorTime();
    bench_.wait.pause(200ms);
    EXPECT_LT(test::processorTime() - before, 25.0) << "errors must not flood the event loop";
    EXPECT_EQ(bench_.notices, 1);
    port_.write({0x25});
    EXPECT_EQ(port_.readAll(), Bytes{});
}

TEST_F(QtSerialPortTest, AHangUpBetweenTwoExchangesIsNoticedAndItOpensAnew)
{
    ASSERT_FALSE(port_.open());
    pullOut();
    port_.write({0x25});
    bench_.wait.pause(50ms);
    EXPECT_FALSE(port_.isOpen());
    EXPECT_EQ(bench_.notices, 1);
    ASSERT_TRUE(port_.open()) << "not plugged in again yet";
    plugIn();
    ASSERT_FALSE(port_.open());
    sendLater(10ms, {'1', '4'});
    EXPECT_EQ(bench_.waitForBytes(2), WaitResult::met);
    EXPECT_EQ(port_.readAll(), (Bytes{'1', '4'}));
}

TEST_F(QtSerialPortTest, ClosedInItsOwnNoticeItStaysQuiet)
{
    ASSERT_FALSE(port_.open());
    port_.setNotice([this] {
        port_.close();
        bench_.wait.wake();
    });
    sendLater(10ms, {1, 2, 3});
    EXPECT_EQ(bench_.waitForBytes(513), WaitResult::met);
    EXPECT_FALSE(port_.isOpen());
    EXPECT_FALSE(port_.open());
}

TEST_F(QtSerialPortTest, ARefusalTellsTheDeviceAndWhy)
{
    ASSERT_FALSE(port_.open());
    QtSerialPort second(map_);
    second.setPortNumber(5);
    const std::tuple<Text, PortFault, Text> cases[] = {
        {textFromUtf8(device_->path()), PortFault::busy, u""},
        {u"/dev/no-such-device", PortFault::absent, u"No such file or directory"},
        {u"/dev/null", PortFault::notSerial, u""},
        {u"/etc", PortFault::notSerial, u""}};
    for (const auto& [device, fault, words] : cases) {
        settings_.save("Ports", "COM5", device);
        const auto error = second.open();
        ASSERT_TRUE(error) << utf8FromText(device);
        EXPECT_EQ(error->fault, fault) << utf8FromText(device);
        EXPECT_EQ(error->device, device);
        EXPECT_TRUE(words.empty() ? !error->description.empty() : error->description == words);
        EXPECT_FALSE(second.isOpen());
    }
    EXPECT_TRUE(port_.isOpen());
}

TEST_F(QtSerialPortTest, TakesTheSettingsOfTheFirmwareUpdates)
{
    for (const auto& settings :
         {LineSettings{115200, Parity::none, 1}, LineSettings{14400, Parity::odd, 2}}) {
        port_.setSettings(settings);
        ASSERT_FALSE(port_.open());
        const auto* device = port_.findChildren<QSerialPort*>().last();
        EXPECT_EQ(device->baudRate(), settings.baud);
        EXPECT_EQ(device->parity() == QSerialPort::OddParity, settings.parity == Parity::odd);
        EXPECT_EQ(device->stopBits() == QSerialPort::TwoStop, settings.stopBits == 2);
        port_.close();
    }
}

TEST_F(QtSerialPortTest, WhatADeviceCanNotDoIsNoHangUp)
{
    ASSERT_FALSE(port_.open());
    auto* device = port_.findChild<QSerialPort*>();
    EXPECT_FALSE(device->setDataTerminalReady(true));
    EXPECT_EQ(device->error(), QSerialPort::UnsupportedOperationError);
    bench_.wait.pause(10ms);
    EXPECT_TRUE(port_.isOpen());
    EXPECT_EQ(bench_.notices, 0);
}

TEST(PortError, NamesTheGroupThatGrantsAccess)
{
    const std::tuple<DeviceAccess, Text, PortFault> cases[] = {
        {{true, QStringLiteral("dialout")}, u"dialout", PortFault::denied},
        {{true, QStringLiteral("root")}, u"", PortFault::denied},
        {{true, QString()}, u"", PortFault::denied},
        {{false, QStringLiteral("dialout")}, u"", PortFault::busy},
    };
    for (const auto& [access, group, fault] : cases) {
        const auto error = portError({QSerialPort::PermissionError, QStringLiteral("no"), QString()}, access);
        EXPECT_EQ(error.description, u"no");
        EXPECT_EQ(error.accessGroup, group);
        EXPECT_EQ(error.fault, fault);
    }
}

} // namespace
} // namespace karvo
