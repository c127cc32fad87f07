#include "shell/recovery_slot.h"

#include "platform/text_conversion.h"

#include <QDir>
#include <QFileInfo>

namespace karvo
{

namespace
{

constexpr int places = 9;

} // namespace

std::unique_ptr<RecoverySlot> RecoverySlot::take(const std::filesystem::path& folder)
{
    const QDir dir(pathToQString(folder));
    if (!dir.mkpath(QStringLiteral(".")))
        return nullptr;
    std::unique_ptr<RecoverySlot> empty;
    for (int place = 1; place <= places; ++place) {
        const QString file = dir.filePath(QStringLiteral("recovery-%1.kvr").arg(place));
        auto lock = std::make_unique<QLockFile>(file + QStringLiteral(".lock"));
        lock->setStaleLockTime(0);
        if (!lock->tryLock(0))
            continue;
        const bool holdsSomething = QFileInfo::exists(file);
        std::unique_ptr<RecoverySlot> slot(new RecoverySlot(std::move(lock), toPath(file)));
        if (holdsSomething)
            return slot;
        if (!empty)
            empty = std::move(slot);
    }
    return empty;
}

} // namespace karvo
