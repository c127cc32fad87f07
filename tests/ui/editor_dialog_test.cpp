#include "ui/editor_dialog.h"

#include "support/modal_driver.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

namespace karvo
{
namespace
{

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

TEST(EditorDialog, AsksOnceWhereSomethingWouldBeLost)
{
    LanguageTables texts;
    texts.messages[900] = u"0900Verloren?";
    texts.captions[710] = u"0710Verwerfen";
    texts.captions[714] = u"0714Weiter";
    Editor editor(texts);
    test::ModalDriver driver;
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
