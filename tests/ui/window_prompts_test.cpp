#include "ui/window_prompts.h"

#include "support/modal_driver.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace karvo
{

namespace
{

LanguageTables germanTexts()
{
    LanguageTables texts;
    texts.captions[700] = u"0700OK";
    texts.captions[701] = u"0701Abbrechen";
    texts.captions[702] = u"0702Ja";
    texts.captions[703] = u"0703Nein";
    texts.captions[707] = u"0707Hinweis";
    texts.captions[708] = u"0708Frage";
    texts.captions[709] = u"0709Fehler";
    return texts;
}

struct PromptsBench {
    LanguageTables texts = germanTexts();
    int ends = 0;
    WindowPrompts prompts{texts, [this] { ++ends; }};
    test::ModalDriver driver;
};

} // namespace

TEST(WindowPrompts, ShowsAMessageToTheLetter)
{
    PromptsBench bench;
    bench.driver.expect(QStringLiteral("message"), [](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.text().toStdString(), "Die Datei\r\n<b>C:\\x</b> fehlt");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle().toStdString(), "Fehler");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        ASSERT_EQ(box.buttons().size(), 1);
        EXPECT_EQ(box.buttons().front()->text().toStdString(), "OK");
        box.buttons().front()->click();
    });
    bench.prompts.message(u"Die Datei\r\n<b>C:\\x</b> fehlt", PromptIcon::warning);
    EXPECT_TRUE(bench.driver.isDone());
}

TEST(WindowPrompts, ABoxBelongsToTheDialogThatStandsOpen)
{
    PromptsBench bench;
    QWidget main;
    bench.prompts.setParentWindow(&main);
    const auto expectOwner = [&](const QWidget& owner) {
        bench.driver.expect(QStringLiteral("box"), [&](QWidget& window) {
            EXPECT_EQ(window.parentWidget(), &owner);
            window.close();
        });
        bench.prompts.message(u"text");
    };
    expectOwner(main);
    QDialog dialog(&main);
    dialog.setModal(true);
    dialog.show();
    expectOwner(dialog);
    dialog.hide();
    expectOwner(main);
}

TEST(WindowPrompts, AKindOfFileComesWithItsFolderAndExtension)
{
    PromptsBench bench;
    const QTemporaryDir scratch;
    QDir(scratch.path()).mkdir(QStringLiteral("lists"));
    const std::filesystem::path own = scratch.path().toStdString();
    const FileRequest request = {u"Save", own, u"*.bcr",
                                 u"bcr",  {},  OtherFileKind{u"*.kvr", u"kvr", own / "lists"}};
    for (const bool other : {false, true}) {
        bench.driver.expect(QStringLiteral("dialog"), [other](QWidget& window) {
            auto& dialog = dynamic_cast<QFileDialog&>(window);
            auto* const kinds = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
            auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_TRUE(kinds != nullptr && name != nullptr);
            EXPECT_EQ(kinds->count(), 2);
            if (other)
                QTest::keyClick(kinds, Qt::Key_Down);
            name->setText(QStringLiteral("mine"));
            QTest::keyClick(name, Qt::Key_Return);
        });
        const auto chosen = bench.prompts.saveFile(request);
        ASSERT_TRUE(chosen);
        EXPECT_EQ(*chosen, other ? own / "lists" / "mine.kvr" : own / "mine.bcr");
    }
}

TEST(WindowPrompts, AsksInTheLanguageInUse)
{
    PromptsBench bench;
    bench.driver.expectBox(QStringLiteral("Wirklich?"), QStringLiteral("Ja"));
    EXPECT_TRUE(bench.prompts.question(u"Wirklich?"));
    bench.driver.expectBox(QStringLiteral("Wirklich?"), QStringLiteral("Nein"));
    EXPECT_FALSE(bench.prompts.question(u"Wirklich?"));
    bench.driver.expect(QStringLiteral("closed"), [](QWidget& window) { window.close(); });
    EXPECT_FALSE(bench.prompts.question(u"Wirklich?"));
}

TEST(WindowPrompts, HandsOverWhatWasTyped)
{
    PromptsBench bench;
    bench.driver.expectInput(QStringLiteral("Suchen"), QStringLiteral("Größe"));
    EXPECT_EQ(bench.prompts.input(u"Suchen", u"Wort:", u"alt"), Text(u"Größe"));
    bench.driver.expectInput(QStringLiteral("Suchen"), std::nullopt);
    EXPECT_EQ(bench.prompts.input(u"Suchen", u"Wort:", u"alt"), std::nullopt);
}

TEST(WindowPrompts, RefusesUnfitCharactersWhereTheyAreTyped)
{
    PromptsBench bench;
    bench.driver.expect(QStringLiteral("input"), [](QWidget& window) {
        auto* const field = window.findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->text().toStdString(), "alt");
        field->selectAll();
        field->insert(QStringLiteral("Ł"));
        EXPECT_EQ(field->text().toStdString(), "alt");
        dynamic_cast<QDialog&>(window).accept();
    });
    EXPECT_EQ(bench.prompts.input(u"Suchen", u"Wort:", u"alt"), Text(u"alt"));
}

TEST(WindowPrompts, ShowNothingFurtherOnceTheProgramEnds)
{
    PromptsBench bench;
    bench.prompts.endProgram();
    EXPECT_EQ(bench.ends, 1);
    EXPECT_TRUE(bench.prompts.hasEnded());
    bench.prompts.message(u"late");
    EXPECT_FALSE(bench.prompts.question(u"late?"));
    EXPECT_EQ(bench.prompts.input(u"late", u"late", u"late"), std::nullopt);
}

TEST(WindowPrompts, KeepQtsWordsUntilALanguageIsLoaded)
{
    PromptsBench bench;
    bench.texts = LanguageTables();
    bench.driver.expectBox(QStringLiteral("File [Deutsch_var.txt] not available !"), QStringLiteral("OK"));
    bench.prompts.message(u"File [Deutsch_var.txt] not available !");
}

TEST(WindowPrompts, OffersAChoiceWithTheCurrentOneChosen)
{
    PromptsBench bench;
    const std::vector<Text> options = {u"Variante 1", u"Variante 2", u"Variante 3"};
    const auto answer = [&](bool accept) {
        bench.driver.expect(QStringLiteral("choice"), [accept](QWidget& window) {
            auto& dialog = dynamic_cast<QInputDialog&>(window);
            EXPECT_EQ(dialog.textValue().toStdString(), "Variante 2");
            EXPECT_EQ(dialog.labelText().toStdString(), "Welche?");
            EXPECT_EQ(dialog.cancelButtonText().toStdString(), "Abbrechen");
            dialog.setTextValue(QStringLiteral("Variante 3"));
            accept ? dialog.accept() : dialog.reject();
        });
        return bench.prompts.choice(u"Variante", u"Welche?", options, 1);
    };
    EXPECT_EQ(answer(true), 2U);
    EXPECT_EQ(answer(false), std::nullopt);
}

} // namespace karvo
