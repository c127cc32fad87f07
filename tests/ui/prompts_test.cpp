// What the windows ask and tell, and a window that asks before typed work is lost.
#include "support/modal_driver.h"
#include "support/scratch_folder.h"
#include "ui/editor_dialog.h"
#include "ui/window_prompts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QTest>

namespace karvo
{
namespace
{

struct PromptsTest : testing::Test {
    PromptsTest()
    {
        texts.messages[900] = u"0900Verloren?";
        const std::pair<std::size_t, TextView> captions[] = {
            {700, u"OK"},        {701, u"Abbrechen"}, {702, u"Ja"},    {703, u"Nein"},
            {710, u"Verwerfen"}, {714, u"Weiter"},    {708, u"Frage"}, {709, u"Fehler"}};
        for (const auto& [number, caption] : captions)
            texts.captions[number] = u"0000" + Text(caption);
    }
    LanguageTables texts;
    int ends = 0;
    WindowPrompts prompts{texts, [this] { ++ends; }};
    test::ModalDriver driver;
};

TEST_F(PromptsTest, ShowAMessageToTheLetterOverTheDialogThatStandsOpen)
{
    QWidget main;
    prompts.setParentWindow(&main);
    QDialog dialog(&main);
    dialog.setModal(true);
    dialog.setObjectName(QStringLiteral("dialog"));
    driver.leaveAlone("dialog");
    for (QWidget* const owner : {&main, static_cast<QWidget*>(&dialog), &main}) {
        dialog.setVisible(owner == &dialog);
        driver.expect(QStringLiteral("message"), [owner](QWidget& window) {
            auto& box = dynamic_cast<QMessageBox&>(window);
            EXPECT_EQ(box.parentWidget(), owner);
            EXPECT_EQ(box.text().toStdString(), "Die Datei\r\n<b>C:\\x</b> fehlt");
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.windowTitle().toStdString(), "Fehler");
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
            ASSERT_EQ(box.buttons().size(), 1);
            EXPECT_EQ(box.buttons().front()->text().toStdString(), "OK");
            box.close();
        });
        prompts.message(u"Die Datei\r\n<b>C:\\x</b> fehlt", PromptIcon::warning);
    }
    texts = LanguageTables(); // until a language is loaded Qt has its own words
    driver.expectBox(QStringLiteral("File not available !"), QStringLiteral("OK"));
    prompts.message(u"File not available !");
}

TEST_F(PromptsTest, KeepTheButtonsOfALongTextOnTheScreen)
{
    for (const Text& longText : {Text(300, u'\n'), Text(3000, u'x'), Text(u"kurz")}) {
        driver.expect(QStringLiteral("long"), [&](QWidget& window) {
            auto& box = dynamic_cast<QMessageBox&>(window);
            EXPECT_EQ(box.text().toStdU16String(), longText);
            const QSize room = window.screen()->availableSize();
            EXPECT_EQ(window.frameSize().boundedTo(room), window.frameSize());
            EXPECT_TRUE(window.rect().contains(box.button(QMessageBox::Ok)->geometry()));
            const auto* const area = window.findChild<QScrollArea*>(QStringLiteral("TextArea"));
            ASSERT_EQ(area != nullptr, longText.size() > 4);
            EXPECT_TRUE(area == nullptr || area->widget()->width() > area->viewport()->width() ||
                        area->widget()->height() > area->viewport()->height());
            box.close();
        });
        prompts.message(longText);
    }
}

TEST_F(PromptsTest, LetAKindOfFileComeWithItsFolderAndExtension)
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
            if (other)
                QTest::keyClick(kinds, Qt::Key_Down);
            name->setText(QStringLiteral("mine"));
            QTest::keyClick(name, Qt::Key_Return);
        });
        EXPECT_EQ(prompts.saveFile(request), other ? own / "lists" / "mine.kvr" : own / "mine.bcr");
    }
}

TEST_F(PromptsTest, AskInTheLanguageInUseUntilTheProgramEnds)
{
    for (const bool yes : {true, false}) {
        driver.expectBox(QStringLiteral("Wirklich?"), yes ? QStringLiteral("Ja") : QStringLiteral("Nein"));
        EXPECT_EQ(prompts.question(u"Wirklich?"), yes);
    }
    driver.expect(QStringLiteral("closed"), [](QWidget& window) { window.close(); });
    EXPECT_FALSE(prompts.question(u"Wirklich?"));
    prompts.endProgram();
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(prompts.hasEnded());
    prompts.message(u"late");
    EXPECT_FALSE(prompts.question(u"late?"));
    EXPECT_EQ(prompts.input(u"late", u"late", u"late"), std::nullopt);
}

TEST_F(PromptsTest, HandOverWhatWasTypedAndRefuseUnfitCharactersThere)
{
    driver.expectInput(QStringLiteral("Suchen"), QStringLiteral("Größe"));
    EXPECT_EQ(prompts.input(u"Suchen", u"Wort:", u"alt"), Text(u"Größe"));
    driver.expectInput(QStringLiteral("Suchen"), std::nullopt);
    EXPECT_EQ(prompts.input(u"Suchen", u"Wort:", u"alt"), std::nullopt);
    driver.expect(QStringLiteral("input"), [](QWidget& window) {
        auto* const field = window.findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        field->selectAll();
        for (const auto& typed : {QStringLiteral("ö"), QStringLiteral("Ł"), QStringLiteral("\U0001F697")})
            field->insert(typed);
        dynamic_cast<QDialog&>(window).accept();
    });
    EXPECT_EQ(prompts.input(u"Suchen", u"Wort:", u"alt"), Text(u"ö")) << "only what the files can hold";
}

TEST_F(PromptsTest, OfferAChoiceWithTheCurrentOneChosen)
{
    driver.expect(QStringLiteral("choice"), [](QWidget& window) {
        auto& dialog = dynamic_cast<QInputDialog&>(window);
        EXPECT_EQ(dialog.textValue().toStdString(), "zwei");
        EXPECT_EQ(dialog.cancelButtonText().toStdString(), "Abbrechen");
        dialog.setTextValue(QStringLiteral("drei"));
        dialog.accept();
    });
    EXPECT_EQ(prompts.choice(u"Variante", u"Welche?", {u"eins", u"zwei", u"drei"}, 1), 2U);
    driver.expectInput(QStringLiteral("Variante"), std::nullopt);
    EXPECT_EQ(prompts.choice(u"Variante", u"Welche?", {u"eins", u"zwei"}, 1), std::nullopt);
}

struct Editor : EditorDialog {
    explicit Editor(const LanguageTables& texts) : EditorDialog(texts, "Editor", QString(), nullptr)
    {
        field.setText(QStringLiteral("12"));
        nothingToLose();
    }
    QLineEdit field{this};
    QCheckBox box{this};
};

TEST_F(PromptsTest, AskOnceWhereSomethingTypedWouldBeLost)
{
    Editor editor(texts);
    editor.show();
    const auto answer = [&](const char* button) {
        driver.expectBox(QStringLiteral("Verloren?"), QString::fromLatin1(button));
    };
    editor.box.setChecked(true);
    answer("Weiter");
    QTest::keyClick(&editor, Qt::Key_Escape);
    EXPECT_TRUE(editor.isVisible());
    editor.box.setChecked(false);
    editor.field.setText(QStringLiteral("13"));
    answer("Weiter");
    EXPECT_FALSE(editor.close());
    EXPECT_EQ(editor.field.text(), QStringLiteral("13"));
    answer("Verwerfen");
    editor.reject();
    EXPECT_FALSE(editor.isVisible());
    EXPECT_TRUE(driver.isDone());
    editor.show();
    editor.field.setText(QStringLiteral("12"));
    EXPECT_TRUE(editor.close()) << "as it was: without a question";
}

} // namespace
} // namespace karvo
