#include "shell/recovery_slot.h"

#include "platform/text_conversion.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <vector>

namespace karvo
{

namespace
{

constexpr int places = 999;

// Of the files that hold something, in their order.
std::vector<int> placesInUse(const QDir& dir)
{
    static const QRegularExpression pattern(QStringLiteral("^recovery-([1-9][0-9]{0,2})\\.kvr$"));
    std::vector<int> numbers;
    for (const QString& name : dir.entryList({QStringLiteral("recovery-*.kvr")}, QDir::Files)) {
        if (const auto match = pattern.match(name); match.hasMatch())
            numbers.push_back(match.captured(1).toInt());
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

} // namespace

std::unique_ptr<RecoverySlot> RecoverySlot::take(const std::filesystem::path& folder)
{
    const QDir dir(pathToQString(folder));
    if (!dir.mkpath(QStringLiteral(".")))
        return nullptr;
    for (const int place : placesInUse(dir)) {
        if (auto slot = takePlace(dir, place))
            return slot;
    }
    for (int place = 1; place <= places; ++place) {
        if (auto slot = takePlace(dir, place))
            return slot;
    }
    return nullptr;
}

std::unique_ptr<RecoverySlot> RecoverySlot::takePlace(const QDir& dir, int place)
{
    const QString file = dir.filePath(QStringLiteral("recovery-%1.kvr").arg(place));
    auto lock = std::make_unique<QLockFile>(file + QStringLiteral(".lock"));
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0))
        return nullptr;
    return std::unique_ptr<RecoverySlot>(new RecoverySlot(std::move(lock), toPath(file)));
}

} // namespace karvo
