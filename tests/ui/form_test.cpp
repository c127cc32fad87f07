// What every window stands on: its place, its size on a small screen, and fields that are judged.
#include "support/memory_files.h"
#include "support/scripted_seams.h"
#include "ui/form.h"
#include "ui/named.h"
#include "ui/window_places.h"

#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <QVBoxLayout>

namespace karvo::test
{

struct Sample : Form {
    explicit Sample(Prompts& prompts, int fields = 2) : Form(texts, "Sample", QString(), nullptr)
    {
        for (int i = 0; i < fields; ++i)
            column().addWidget(entryField(("Field" + std::to_string(i)).c_str(), this));
        first = findChild<QLineEdit*>(QStringLiteral("Field0"));
        whenEntered(*first, [this, &prompts] { refuse(*first, u"wrong", prompts); });
        cancel = addButton("Cancel", Caption::cancelButton, ButtonRow::RejectRole);
    }
    void open()
    {
        show();
        activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
    }
    LanguageTables texts;
    QLineEdit* first;
    QPushButton* cancel;
};

TEST(Form, RefusesWhatWasTypedOnceAndNothingThatIsGivenUp)
{
    Journal journal;
    ScriptedPrompts prompts(journal);
    Sample form(prompts);
    const std::function<void()> givesUp[] = {[&] { QTest::mouseClick(form.cancel, Qt::LeftButton); },
                                             [&] { QTest::keyClick(form.first, Qt::Key_Escape); },
                                             [&] { form.close(); }};
    for (const auto& giveUp : givesUp) {
        form.open();
        form.first->setFocus();
        QTest::keyClicks(form.first, QStringLiteral("x"));
        giveUp();
        EXPECT_FALSE(form.isVisible());
        EXPECT_TRUE(journal.empty());
    }
    form.open();
    form.first->setFocus();
    QTest::keyClicks(form.first, QStringLiteral("x"));
    QTest::keyClick(form.first, Qt::Key_Tab);
    EXPECT_EQ(journal.size(), 1U);
    EXPECT_EQ(form.focusWidget(), form.first);
    QTest::keyClick(form.first, Qt::Key_Tab);
    EXPECT_EQ(journal.size(), 1U) << "the same is not said again";
    EXPECT_NE(form.focusWidget(), form.first);
    form.first->setFocus();
    QTest::keyClicks(form.first, QStringLiteral("y"));
    QTest::keyClick(form.first, Qt::Key_Return);
    EXPECT_EQ(journal.size(), 2U);
}

TEST(Form, ScrollsWhatTheScreenHasNoRoomForAndFollowsTheKeyboard)
{
    Journal journal;
    ScriptedPrompts prompts(journal);
    Sample form(prompts, 60);
    form.open();
    EXPECT_TRUE(form.screen()->availableGeometry().contains(form.frameGeometry()));
    EXPECT_TRUE(form.rect().contains(
        form.cancel->geometry().translated(form.cancel->mapTo(&form, QPoint()) - form.cancel->pos())));
    form.cancel->setFocus();
    QTest::keyClick(form.cancel, Qt::Key_Backtab);
    auto* const last = form.findChild<QLineEdit*>(QStringLiteral("Field59"));
    EXPECT_EQ(form.focusWidget(), last);
    EXPECT_FALSE(last->visibleRegion().isEmpty());
}

TEST(WindowPlaces, BringAWindowBackWhereThePersonLeftItOnAScreenThatIsThere)
{
    Journal journal;
    ScriptedPrompts prompts(journal);
    MemorySettings settings;
    const WindowPlaces places(settings);
    Sample(prompts).open();
    EXPECT_TRUE(settings.values.empty()) << "nobody touched it";
    QRect left;
    {
        Sample form(prompts);
        form.open();
        form.setGeometry(120, 130, 310, 240);
        left = form.geometry();
    }
    EXPECT_EQ(settings.values.count("Window/Sample"), 1U);
    {
        Sample form(prompts);
        form.open();
        EXPECT_EQ(form.geometry(), left);
        form.setGeometry(5000, 5000, 300, 200); // of a screen that has been taken away since
    }
    Sample form(prompts);
    form.open();
    EXPECT_TRUE(form.screen()->availableGeometry().contains(form.frameGeometry()));
}

} // namespace karvo::test
