#include "shell/recovery_slot.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace karvo::test
{

TEST(RecoverySlot, ProgramsSideBySideHaveFilesOfTheirOwn)
{
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.filePath(QStringLiteral("new/deep")).toStdString();
    // However many there are, each has a place; those of ten more are only looked for.
    std::vector<std::unique_ptr<RecoverySlot>> places;
    for (int place = 1; place <= 12; ++place) {
        places.push_back(RecoverySlot::take(path));
        ASSERT_TRUE(places.back());
        EXPECT_EQ(places.back()->file(), path / ("recovery-" + std::to_string(place) + ".kvr"));
    }
    places.resize(2);
    EXPECT_EQ(QDir(folder.filePath(QStringLiteral("new/deep"))).entryList({QStringLiteral("*.lock")}).size(),
              2);
    // The second one crashes with changes; whoever starts next takes care of them.
    QFile left(QString::fromStdString(places[1]->file().string()));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    places.clear();
    const auto next = RecoverySlot::take(path);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->file(), path / "recovery-2.kvr");
    EXPECT_EQ(RecoverySlot::take(path / "recovery-2.kvr" / "deep"), nullptr) << "a file is in the way";
}

} // namespace karvo::test
