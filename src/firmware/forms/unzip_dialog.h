// Which archive is to be unpacked, and where to.
#pragma once

#include "firmware/unpack.h"
#include "ui/form.h"

class QLineEdit;

namespace karvo
{

class Unzip_Dialog : public Form
{
    Q_OBJECT

public:
    Unzip_Dialog(const LanguageTables& texts, const UnzipRequest& request, QWidget* parent = nullptr);

    // With the archive as it stands in its field.
    UnzipRequest request() const;

private:
    void addButtons();

    const UnzipRequest request_;
    QLineEdit* archive_;
};

// Lets the person choose an archive and confirm the target folder. Nothing, after a message where that is
// due, when none was chosen.
std::optional<UnzipRequest> askForUnzip(Workbench& bench, QWidget* parent);

// The same for an archive that has been chosen.
std::optional<UnzipRequest> confirmUnzip(Workbench& bench, const std::filesystem::path& archive,
                                         QWidget* parent);

} // namespace karvo
