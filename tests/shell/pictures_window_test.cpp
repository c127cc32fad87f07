// The pictures of function sheets as windows: chosen in and stepped by keyboard, and told in words.
#include "editors/forms/picture.h"

#include "shell/window_bench.h"

#include <QTableWidget>

namespace karvo::test
{

struct ShownPicture {
    LanguageTables texts;
    std::map<int, int> values;
    std::unique_ptr<Picture> picture;
    std::string chosen;

    ShownPicture(std::string_view name, std::map<int, int> given) : values(std::move(given))
    {
        numberEveryText(texts);
        picture.reset(makePicture(name, PictureWords{texts}, false, nullptr));
        QObject::connect(picture.get(), &Picture::changed, [this](int cv, int value) {
            chosen += std::to_string(cv) + "=" + std::to_string(value) + " ";
            values[cv] = value;
            show();
        });
        show();
        picture->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(picture.get()));
    }
    void show()
    {
        picture->setValues([this](int cv) {
            const auto found = values.find(cv);
            return found == values.end() ? std::nullopt : std::optional(found->second);
        });
    }
};

TEST(Picture, KeyMapIsChosenInByKeyboard)
{
    ShownPicture keys("keys", {{33, 1}, {34, 37}, {19, 0}});
    auto& table = find<QTableWidget>(*keys.picture, "key_map");
    table.setCurrentCell(3, 0);
    for (const auto key :
         {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return, Qt::Key_Return, Qt::Key_Right, Qt::Key_Space})
        QTest::keyClick(&table, key);
    EXPECT_EQ(keys.chosen, "33=3 33=4 34=4 "); // choosing again changes nothing
    EXPECT_TRUE(table.isRowHidden(13));        // 37 is gone
    EXPECT_FALSE(table.isRowHidden(14));
    EXPECT_TRUE(table.isRowHidden(15)); // the model lacks CV20
}

TEST(Picture, IsPausedAndSteppedByKeyboardAndTellsTheMoment)
{
    ShownPicture line("bus_stop", {{102, 8}, {103, 10}, {104, 50}, {107, 8}, {66, 40}});
    auto& picture = dynamic_cast<MovingPicture&>(*line.picture);
    picture.setAnimated(false);
    QTest::keyClick(&picture, Qt::Key_Right); // to the halt
    EXPECT_TRUE(picture.accessibleDescription().startsWith(QStringLiteral("0 s: ")));
    QTest::keyClick(&picture, Qt::Key_Right); // to the door light
    EXPECT_TRUE(picture.accessibleDescription().startsWith(QStringLiteral("1 s: ")));
    picture.setAnimated(true);
    EXPECT_TRUE(picture.isPaused());
    QTest::keyClick(&picture, Qt::Key_Space);
    EXPECT_FALSE(picture.isPaused());
}

} // namespace karvo::test
