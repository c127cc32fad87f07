#include "ui/window_prompts.h"

#include "support/modal_driver.h"
#include "support/scratch_folder.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>

namespace karvo
{
namespace
{

struct WindowPromptsTest : testing::Test {
    WindowPromptsTest()
    {
        const std::pair<std::size_t, TextView> captions[] = {{700, u"OK"},    {701, u"Abbrechen"},
                                                             {702, u"Ja"},    {703, u"Nein"},
                                                             {708, u"Frage"}, {709, u"Fehler"}};
        for (const auto& [number, caption] : captions)
            texts.captions[number] = u"0000" + Text(caption);
    }
    LanguageTables texts;
    int ends = 0;
    WindowPrompts prompts{texts, [this] { ++ends; }};
    test::ModalDriver driver;
};

TEST_F(WindowPromptsTest, ShowsAMessageToTheLetter)
{
    driver.expect(QStringLiteral("message"), [](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.text().toStdString(), "Die Datei\r\n<b>C:\\x</b> fehlt");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle().toStdString(), "Fehler");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        ASSERT_EQ(box.buttons().size(), 1);
        EXPECT_EQ(box.buttons().front()->text().toStdString(), "OK");
        box.buttons().front()->click();
    });
    prompts.message(u"Die Datei\r\n<b>C:\\x</b> fehlt", PromptIcon::warning);
    EXPECT_TRUE(driver.isDone());
    texts = LanguageTables(); // until a language is loaded Qt has its own words
    driver.expectBox(QStringLiteral("File not available !"), QStringLiteral("OK"));
    prompts.message(u"File not available !");
}

TEST_F(WindowPromptsTest, ABoxBelongsToTheDialogThatStandsOpen)
{
    QWidget main;
    prompts.setParentWindow(&main);
    QDialog dialog(&main);
    dialog.setModal(true);
    for (QWidget* const owner : {&main, static_cast<QWidget*>(&dialog), &main}) {
        dialog.setVisible(owner == &dialog);
        driver.expect(QStringLiteral("box"), [&](QWidget& window) {
            EXPECT_EQ(window.parentWidget(), owner);
            window.close();
        });
        prompts.message(u"text");
    }
}

TEST_F(WindowPromptsTest, AKindOfFileComesWithItsFolderAndExtension)
{
    const test::ScratchFolder scratch;
    const auto& own = scratch.path();
    std::filesystem::create_directory(own / "lists");
    const FileRequest request = {u"Save", own, u"*.bcr",
                                 u"bcr",  {},  OtherFileKind{u"*.kvr", u"kvr", own / "lists"}};
    for (const bool other : {false, true}) {
        driver.expect(QStringLiteral("dialog"), [other](QWidget& window) {
            auto* const kinds = window.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
            auto* const name = window.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_TRUE(kinds != nullptr && name != nullptr);
            EXPECT_EQ(kinds->count(), 2);
            if (other)
                QTest::keyClick(kinds, Qt::Key_Down);
            name->setText(QStringLiteral("mine"));
            QTest::keyClick(name, Qt::Key_Return);
        });
        EXPECT_EQ(prompts.saveFile(request), other ? own / "lists" / "mine.kvr" : own / "mine.bcr");
    }
}

TEST_F(WindowPromptsTest, AsksInTheLanguageInUse)
{
    driver.expectBox(QStringLiteral("Wirklich?"), QStringLiteral("Ja"));
    EXPECT_TRUE(prompts.question(u"Wirklich?"));
    driver.expectBox(QStringLiteral("Wirklich?"), QStringLiteral("Nein"));
    EXPECT_FALSE(prompts.question(u"Wirklich?"));
    driver.expect(QStringLiteral("closed"), [](QWidget& window) { window.close(); });
    EXPECT_FALSE(prompts.question(u"Wirklich?"));
}

TEST_F(WindowPromptsTest, HandsOverWhatWasTypedAndRefusesUnfitCharactersThere)
{
    driver.expectInput(QStringLiteral("Suchen"), QStringLiteral("Größe"));
    EXPECT_EQ(prompts.input(u"Suchen", u"Wort:", u"alt"), Text(u"Größe"));
    driver.expectInput(QStringLiteral("Suchen"), std::nullopt);
    EXPECT_EQ(prompts.input(u"Suchen", u"Wort:", u"alt"), std::nullopt);
    driver.expect(QStringLiteral("input"), [](QWidget& window) {
        auto* const field = window.findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        field->selectAll();
        field->insert(QStringLiteral("Ł"));
        dynamic_cast<QDialog&>(window).accept();
    });
    EXPECT_EQ(prompts.input(u"Suchen", u"Wort:", u"alt"), Text(u"alt"));
}

TEST_F(WindowPromptsTest, ShowNothingFurtherOnceTheProgramEnds)
{
    prompts.endProgram();
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(prompts.hasEnded());
    prompts.message(u"late");
    EXPECT_FALSE(prompts.question(u"late?"));
    EXPECT_EQ(prompts.input(u"late", u"late", u"late"), std::nullopt);
}

TEST_F(WindowPromptsTest, OffersAChoiceWithTheCurrentOneChosen)
{
    for (const auto& [accept, chosen] : {std::pair{true, std::optional<std::size_t>(2)}, {false, {}}}) {
        driver.expect(QStringLiteral("choice"), [accept = accept](QWidget& window) {
            auto& dialog = dynamic_cast<QInputDialog&>(window);
            EXPECT_EQ(dialog.textValue().toStdString(), "zwei");
            EXPECT_EQ(dialog.labelText().toStdString(), "Welche?");
            EXPECT_EQ(dialog.cancelButtonText().toStdString(), "Abbrechen");
            dialog.setTextValue(QStringLiteral("drei"));
            accept ? dialog.accept() : dialog.reject();
        });
        EXPECT_EQ(prompts.choice(u"Variante", u"Welche?", {u"eins", u"zwei", u"drei"}, 1), chosen);
    }
}

} // namespace
} // namespace karvo
