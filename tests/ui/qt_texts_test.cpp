#include "ui/qt_texts.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace karvo
{

TEST(QtTexts, FollowTheLanguage)
{
    QtTexts texts(KARVO_PROGRAM_FOLDER);
    const std::pair<LanguageCode, const char*> cases[] = {{LanguageCode::german, "Abbrechen"},
                                                          {LanguageCode::dutch, "Annuleren"},
                                                          {LanguageCode::french, "Annuler"},
                                                          {LanguageCode::spanish, "Cancelar"},
                                                          {LanguageCode::english, "Cancel"}};
    for (const auto& [code, cancel] : cases) {
        texts.use(code);
        EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel").toStdString(), cancel);
        EXPECT_EQ(qt_error_string(2).toStdString(), "No such file or directory") << "the system's own words";
    }
}

} // namespace karvo
