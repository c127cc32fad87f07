#include "ui/editor_dialog.h"

#include "support/modal_driver.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

namespace karvo
{

namespace
{

LanguageTables questionTexts()
{
    LanguageTables texts;
    texts.messages[900] = u"0900Verloren?";
    texts.captions[710] = u"0710Verwerfen";
    texts.captions[714] = u"0714Weiter";
    return texts;
}

class Editor : public EditorDialog
{
public:
    explicit Editor(const LanguageTables& texts) : EditorDialog(texts, nullptr), field(this), box(this)
    {
        field.setText(QStringLiteral("12"));
        nothingToLose();
    }
    QLineEdit field;
    QCheckBox box;
};

struct EditorBench {
    LanguageTables texts = questionTexts();
    Editor editor{texts};
    test::ModalDriver driver;

    EditorBench() { editor.show(); }
    void answer(const char* button)
    {
        driver.expectBox(QStringLiteral("Verloren?"), QString::fromLatin1(button));
    }
};

} // namespace

TEST(EditorDialog, AsksOnceWhereSomethingWouldBeLost)
{
    EditorBench bench;
    bench.editor.field.setText(QStringLiteral("13"));
    bench.answer("Weiter");
    QTest::keyClick(&bench.editor, Qt::Key_Escape);
    EXPECT_TRUE(bench.editor.isVisible());
    bench.answer("Weiter");
    EXPECT_FALSE(bench.editor.close());
    EXPECT_EQ(bench.editor.field.text(), QStringLiteral("13"));
    bench.answer("Verwerfen");
    bench.editor.reject();
    EXPECT_FALSE(bench.editor.isVisible());
    EXPECT_TRUE(bench.driver.isDone());
}

TEST(EditorDialog, ATickCountsAndWhatIsAsItWasDoesNot)
{
    EditorBench bench;
    bench.editor.field.setText(QStringLiteral("13"));
    bench.editor.field.setText(QStringLiteral("12"));
    bench.editor.box.setChecked(true);
    bench.answer("Weiter");
    bench.editor.reject();
    bench.editor.box.setChecked(false);
    EXPECT_TRUE(bench.editor.close()) << "without a question";
}

} // namespace karvo
