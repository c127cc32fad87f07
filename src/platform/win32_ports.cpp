#include "platform/port_map.h"
#include "platform/win32_handle.h"

// Makes the GUIDs of the headers behind it constants of this file.
#include <initguid.h>

#include <setupapi.h>
#include <winioctl.h>

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace karvo
{

namespace
{

struct CloseKey {
    void operator()(HKEY key) const { ::RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

struct CloseDevices {
    void operator()(HDEVINFO devices) const { ::SetupDiDestroyDeviceInfoList(devices); }
};
using Devices = std::unique_ptr<void, CloseDevices>;

// Longer than any name that is of use; what does not fit is left out.
using Words = std::array<wchar_t, 1024>;

// Up to the first zero: of several words the first.
QString text(const Words& words)
{
    return QString::fromWCharArray(words.data(),
                                   qsizetype(std::find(words.begin(), words.end(), L'\0') - words.begin()));
}

QString property(const Devices& devices, SP_DEVINFO_DATA& device, DWORD which)
{
    Words words{};
    constexpr DWORD longest = sizeof words - sizeof(wchar_t);
    const bool isThere = ::SetupDiGetDeviceRegistryPropertyW(
        devices.get(), &device, which, nullptr, reinterpret_cast<BYTE*>(words.data()), longest, nullptr);
    return isThere ? text(words) : QString();
}

QString portName(const Devices& devices, SP_DEVINFO_DATA& device)
{
    const HKEY opened =
        ::SetupDiOpenDevRegKey(devices.get(), &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (opened == INVALID_HANDLE_VALUE)
        return {};
    const Key key(opened);
    Words words{};
    DWORD size = sizeof words;
    const auto result =
        ::RegGetValueW(key.get(), nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, words.data(), &size);
    return result == ERROR_SUCCESS ? text(words) : QString();
}

// From an identifier such as "USB\VID_0403&PID_6001&REV_0600" or "FTDIBUS\COMPORT&VID_0403&PID_6001".
std::optional<UsbIds> usbIds(const QString& hardware)
{
    static const QRegularExpression ids(QStringLiteral("VID_([0-9A-F]{4}).*PID_([0-9A-F]{4})"),
                                        QRegularExpression::CaseInsensitiveOption);
    const auto match = ids.match(hardware);
    if (!match.hasMatch())
        return std::nullopt;
    return UsbIds{match.captured(1).toUShort(nullptr, 16), match.captured(2).toUShort(nullptr, 16)};
}

// The system says "USB Serial Port (COM5)"; the port's name stands beside it anyway.
QString withoutName(QString words, const QString& name)
{
    const QString end = QStringLiteral(" (") + name + QLatin1Char(')');
    if (words.endsWith(end, Qt::CaseInsensitive))
        words.chop(end.size());
    return words;
}

SystemPort describe(const Devices& devices, SP_DEVINFO_DATA& device)
{
    const QString name = portName(devices, device);
    QString words = property(devices, device, SPDRP_FRIENDLYNAME);
    if (words.isEmpty())
        words = property(devices, device, SPDRP_DEVICEDESC);
    return {name, name, withoutName(words, name), usbIds(property(devices, device, SPDRP_HARDWAREID))};
}

std::vector<SystemPort> devicesWithWords()
{
    const HDEVINFO all = ::SetupDiGetClassDevsW(&GUID_DEVINTERFACE_COMPORT, nullptr, nullptr,
                                                DIGCF_PRESENT | DIGCF_DEVICEINTERFACE);
    if (all == INVALID_HANDLE_VALUE)
        return {};
    const Devices devices(all);
    std::vector<SystemPort> ports;
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD index = 0; ::SetupDiEnumDeviceInfo(devices.get(), index, &device); ++index) {
        if (SystemPort port = describe(devices, device); !port.name.isEmpty())
            ports.push_back(std::move(port));
    }
    return ports;
}

// Each driver enters here what it serves at the moment.
std::vector<QString> namesInUse()
{
    HKEY opened = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_QUERY_VALUE,
                        &opened) != ERROR_SUCCESS)
        return {};
    const Key key(opened);
    std::vector<QString> names;
    for (DWORD index = 0;; ++index) {
        Words entry{};
        Words name{};
        DWORD entryLength = entry.size();
        DWORD size = sizeof name - sizeof(wchar_t);
        const auto result = ::RegEnumValueW(key.get(), index, entry.data(), &entryLength, nullptr, nullptr,
                                            reinterpret_cast<BYTE*>(name.data()), &size);
        if (result == ERROR_SUCCESS)
            names.push_back(text(name));
        else if (result != ERROR_MORE_DATA)
            return names;
    }
}

// The drivers of some adapters and pairs of virtual ports are known by their names alone.
std::vector<SystemPort> listedPorts()
{
    std::vector<SystemPort> ports = devicesWithWords();
    for (const QString& name : namesInUse()) {
        const bool isKnown = std::any_of(ports.begin(), ports.end(), [&](const SystemPort& port) {
            return port.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (!isKnown && !name.isEmpty())
            ports.push_back({name, name, {}, {}});
    }
    return ports;
}

} // namespace

PortSystem PortSystem::own()
{
    return {PortNaming::windows, listedPorts};
}

} // namespace karvo
