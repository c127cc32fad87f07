#include "firmware/forms/unzip_dialog.h"

#include "program/path_text.h"
#include "ui/captions.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

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
    : QDialog(parent), texts_(texts), request_(request)
{
    setObjectName(QStringLiteral("Unzip_Dialog"));
    setWindowTitle(qtText(texts_.caption(Caption::unzipTitle)));
    auto* const grid = new QGridLayout(this);
    archive_ = addField(*grid, 0, "Zip_File", Caption::zipFileLabel, qtText(pathText(request_.archive)));
    auto* const folder = addField(*grid, 1, "Zip_Ordner", Caption::zipFolderLabel, qtText(unzipFolderName));
    folder->setReadOnly(true);
    folder->setToolTip(qtText(pathText(request_.folder)));
    grid->setRowStretch(2, 1);
    grid->addWidget(buttons(), 3, 0, 1, 2);
}

QLineEdit* Unzip_Dialog::addField(QGridLayout& grid, int row, const char* name, Caption caption,
                                  const QString& text)
{
    auto* const field = new QLineEdit(text, this);
    field->setObjectName(QString::fromLatin1(name));
    field->setMinimumWidth(50 * fontMetrics().averageCharWidth());
    auto* const label = new QLabel(buttonText(texts_.caption(caption)), this);
    label->setBuddy(field);
    field->setAccessibleName(label->text());
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1);
    return field;
}

QWidget* Unzip_Dialog::buttons()
{
    auto* const box = new QDialogButtonBox(this);
    auto* const accepting =
        box->addButton(buttonText(texts_.caption(Caption::okButton)), QDialogButtonBox::AcceptRole);
    accepting->setObjectName(QStringLiteral("OKButton"));
    accepting->setDefault(true);
    auto* const cancel =
        box->addButton(buttonText(texts_.caption(Caption::cancelButton)), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    const auto allow = [accepting](const QString& typed) {
        accepting->setEnabled(!typed.trimmed().isEmpty());
    };
    connect(archive_, &QLineEdit::textChanged, accepting, allow);
    allow(archive_->text());
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return box;
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
