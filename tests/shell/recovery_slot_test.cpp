#include "shell/recovery_slot.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace karvo
{

TEST(RecoverySlot, ProgramsSideBySideHaveFilesOfTheirOwn)
{
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.filePath(QStringLiteral("new/deep")).toStdString();
    auto first = RecoverySlot::take(path);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->file(), path / "recovery-1.kvr");
    auto second = RecoverySlot::take(path);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->file(), path / "recovery-2.kvr");

    // However many there are, each has a place; those of ten more are only looked for.
    std::vector<std::unique_ptr<RecoverySlot>> more;
    for (int place = 3; place <= 12; ++place) {
        more.push_back(RecoverySlot::take(path));
        ASSERT_TRUE(more.back());
        EXPECT_EQ(more.back()->file(), path / ("recovery-" + std::to_string(place) + ".kvr"));
    }
    more.clear();
    EXPECT_EQ(QDir(folder.filePath(QStringLiteral("new/deep"))).entryList({QStringLiteral("*.lock")}).size(),
              2);

    // The second one crashes with changes; whoever starts next takes care of them.
    QFile left(QString::fromStdString(second->file().string()));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    second.reset();
    first.reset();
    const auto next = RecoverySlot::take(path);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->file(), path / "recovery-2.kvr");
}

TEST(RecoverySlot, WithoutAFolderThereIsNone)
{
    const QTemporaryDir folder;
    QFile inTheWay(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_EQ(RecoverySlot::take(folder.filePath(QStringLiteral("file/deep")).toStdString()), nullptr);
}

} // namespace karvo
