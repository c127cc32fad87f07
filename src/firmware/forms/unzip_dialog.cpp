#include "firmware/forms/unzip_dialog.h"

#include "program/path_text.h"
#include "ui/captions.h"
#include "ui/form_rows.h"
#include "ui/named.h"

#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr TextView proposedName = u"*.zip";

std::optional<std::filesystem::path> chooseArchive(Prompts& prompts, const LanguageTables& texts)
{
    std::error_code unknown;
    const auto chosen =
        prompts.openFile({texts.caption(Caption::unzipTitle), std::filesystem::current_path(unknown),
                          Text(proposedName), u"zip", Text(proposedName)});
    return chosen && pathText(chosen->filename()) != proposedName ? chosen : std::nullopt;
}

} // namespace

Unzip_Dialog::Unzip_Dialog(const LanguageTables& texts, const UnzipRequest& request, QWidget* parent)
    : Form(texts, "Unzip_Dialog", Caption::unzipTitle, parent),
      request_(request),
      archive_(named<QLineEdit>("Zip_File", this))
{
    auto* const folder = named<QLineEdit>("Zip_Ordner", this);
    folder->setText(qtText(unzipFolderName));
    folder->setReadOnly(true);
    archive_->setText(qtText(pathText(request_.archive)));
    archive_->setMinimumWidth(50 * fontMetrics().averageCharWidth());
    auto* const rows = new FormRows;
    rows->add(*archive_, {shown(Caption::zipFileLabel)});
    rows->add(*folder, {.label = shown(Caption::zipFolderLabel), .help = qtText(pathText(request_.folder))});
    column().addLayout(rows);
    column().addStretch(1);
    addButtons();
}

void Unzip_Dialog::addButtons()
{
    auto* const accepting = addButton("OKButton", Caption::okButton, ButtonRow::AcceptRole);
    accepting->setDefault(true);
    addButton("CancelButton", Caption::cancelButton, ButtonRow::RejectRole);
    const auto allow = [accepting](const QString& typed) {
        accepting->setEnabled(!typed.trimmed().isEmpty());
    };
    connect(archive_, &QLineEdit::textChanged, accepting, allow);
    allow(archive_->text());
}

// A path that was not touched is handed on as it is: its name may be no text.
UnzipRequest Unzip_Dialog::request() const
{
    if (archive_->text() == qtText(pathText(request_.archive)))
        return request_;
    return {std::filesystem::path(archive_->text().trimmed().toStdU16String()), request_.folder};
}

std::optional<UnzipRequest> askForUnzip(Workbench& bench, QWidget* parent)
{
    const auto archive = chooseArchive(bench.prompts, bench.state.texts);
    if (!archive) {
        bench.prompts.message(bench.state.texts.message(Message::noFileChosen));
        return std::nullopt;
    }
    return confirmUnzip(bench, *archive, parent);
}

std::optional<UnzipRequest> confirmUnzip(Workbench& bench, const std::filesystem::path& archive,
                                         QWidget* parent)
{
    const auto folder = unzipFolder(bench);
    if (!folder)
        return std::nullopt;
    std::error_code notEntered; // the next file dialog then starts where it did
    std::filesystem::current_path(*folder, notEntered);
    Unzip_Dialog dialog(bench.state.texts, {archive, *folder}, parent);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.request()) : std::nullopt;
}

} // namespace karvo
