// The box behind a download that succeeded: where the file lies, and what can be done with it.
#pragma once

#include "ui/message_box.h"

#include <filesystem>

namespace karvo
{

class DownloadDone : public MessageBox
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
