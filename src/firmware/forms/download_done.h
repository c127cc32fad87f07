// The box behind a download that succeeded: where the file lies, and what can be done with it.
#pragma once

#include "language/language_tables.h"

#include <QMessageBox>

#include <filesystem>

namespace karvo
{

class DownloadDone : public QMessageBox
{
    Q_OBJECT

public:
    DownloadDone(const LanguageTables& texts, const std::filesystem::path& file, QWidget* owner);

    enum class Next { nothing, openFolder, unpack };

    // Waits for the person.
    Next ask();

private:
    QPushButton* openFolder_;
    QPushButton* unpack_;
};

} // namespace karvo
