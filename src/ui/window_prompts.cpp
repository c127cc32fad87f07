#include "ui/window_prompts.h"

#include "program/path_text.h"
#include "ui/captions.h"
#include "ui/question_box.h"
#include "ui/typed_text.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>

#include <algorithm>

namespace karvo
{

namespace
{

QMessageBox::Icon boxIcon(PromptIcon icon)
{
    switch (icon) {
    case PromptIcon::none:
        break;
    case PromptIcon::information:
        return QMessageBox::Information;
    case PromptIcon::warning:
        return QMessageBox::Warning;
    case PromptIcon::stop:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

std::filesystem::path chosenPath(const QString& file)
{
    return QFileInfo(file).filesystemFilePath();
}

QString qtPath(const std::filesystem::path& path)
{
    return qtText(pathText(path));
}

// The caption of an item that opens a dialog ends in one; the dialog's own title does not.
QString withoutEllipsis(QString title)
{
    constexpr QLatin1StringView ellipsis("...");
    if (title.endsWith(ellipsis))
        title.chop(ellipsis.size());
    return title;
}

// "Bus 1.5" has no extension, only a dot.
std::filesystem::path withExtension(const QString& file, const Text& extension)
{
    const QString suffix = qtText(extension);
    const bool hasIt = QFileInfo(file).suffix().compare(suffix, Qt::CaseInsensitive) == 0;
    return chosenPath(hasIt ? file : file + u'.' + suffix);
}

// A long prompt would make the window wider than the screen at twice the size; a short one too small for its
// title.
void shapeInput(QInputDialog& dialog)
{
    dialog.setObjectName(QStringLiteral("InputBox"));
    if (auto* const label = dialog.findChild<QLabel*>()) {
        label->setWordWrap(true);
        const QFontMetrics metrics = label->fontMetrics();
        constexpr int besideTitle = 120; // pixels for the frame's own buttons
        label->setMinimumWidth(std::max(40 * metrics.averageCharWidth(),
                                        metrics.horizontalAdvance(dialog.windowTitle()) + besideTitle));
    }
}

} // namespace

WindowPrompts::WindowPrompts(const LanguageTables& texts, std::function<void()> endWaits)
    : texts_(texts), endWaits_(std::move(endWaits))
{
}

void WindowPrompts::message(const Text& text, PromptIcon icon)
{
    const bool bad = icon == PromptIcon::warning || icon == PromptIcon::stop;
    showBox(titled(bad ? Caption::errorTitle : Caption::informationTitle), text, icon);
}

void WindowPrompts::error(const Text& text)
{
    showBox(QStringLiteral("error"), text, PromptIcon::warning);
}

void WindowPrompts::showBox(const QString& title, const Text& text, PromptIcon icon)
{
    if (ended_)
        return;
    MessageBox box(boxIcon(icon), title, text, QMessageBox::Ok, owner());
    nameButton(box, QMessageBox::Ok, Caption::okButton);
    box.exec();
}

bool WindowPrompts::question(const Text& text, QuestionKind, ProposedAnswer proposed)
{
    if (ended_)
        return false;
    QuestionBox box(texts_, text, owner());
    if (proposed == ProposedAnswer::yes)
        box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes && !ended_;
}

std::optional<Text> WindowPrompts::input(const Text& title, const Text& prompt, const Text& initial)
{
    if (ended_)
        return std::nullopt;
    QInputDialog dialog(owner());
    dialog.setWindowTitle(qtText(title));
    dialog.setLabelText(buttonText(prompt));
    shapeInput(dialog);
    dialog.setTextValue(qtText(initial));
    nameButtons(dialog);
    if (auto* const field = dialog.findChild<QLineEdit*>()) {
        field->setValidator(new Windows1252Validator(field));
        field->setObjectName(QStringLiteral("Input"));
        field->setAccessibleName(qtText(prompt));
    }
    if (dialog.exec() != QDialog::Accepted || ended_)
        return std::nullopt;
    return typedText(dialog.textValue());
}

std::optional<std::size_t> WindowPrompts::choice(const Text& title, const Text& prompt,
                                                 const std::vector<Text>& options, std::size_t current)
{
    if (ended_ || current >= options.size())
        return std::nullopt;
    QStringList items;
    for (const Text& option : options)
        items.append(qtText(option));
    QInputDialog dialog(owner());
    dialog.setWindowTitle(qtText(title));
    dialog.setLabelText(buttonText(prompt));
    shapeInput(dialog);
    dialog.setOption(QInputDialog::UseListViewForComboBoxItems); // all of them in view
    dialog.setComboBoxItems(items);
    dialog.setTextValue(items[static_cast<qsizetype>(current)]);
    nameButtons(dialog);
    if (auto* const list = dialog.findChild<QAbstractItemView*>()) {
        list->setObjectName(QStringLiteral("Choices"));
        list->setAccessibleName(qtText(prompt));
        list->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    }
    if (dialog.exec() != QDialog::Accepted || ended_)
        return std::nullopt;
    return static_cast<std::size_t>(items.indexOf(dialog.textValue()));
}

std::optional<std::filesystem::path> WindowPrompts::openFile(const FileRequest& request)
{
    if (ended_)
        return std::nullopt;
    QFileDialog dialog(owner());
    prepare(dialog, request, Caption::openButton);
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (!request.name.empty())
        dialog.selectFile(qtText(request.name));
    if (dialog.exec() != QDialog::Accepted || ended_ || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return chosenPath(dialog.selectedFiles().first());
}

std::vector<std::filesystem::path> WindowPrompts::openFiles(const FileRequest& request)
{
    std::vector<std::filesystem::path> paths;
    if (ended_)
        return paths;
    QFileDialog dialog(owner());
    prepare(dialog, request, Caption::openButton);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    if (dialog.exec() != QDialog::Accepted || ended_)
        return paths;
    for (const QString& file : dialog.selectedFiles())
        paths.push_back(chosenPath(file));
    return paths;
}

std::optional<std::filesystem::path> WindowPrompts::saveFile(const FileRequest& request)
{
    if (ended_)
        return std::nullopt;
    QFileDialog dialog(owner());
    prepare(dialog, request, Caption::saveButton);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // asked below, in the language in use
    dialog.selectFile(qtText(request.name));
    if (request.other)
        offerOther(dialog, request);
    while (dialog.exec() == QDialog::Accepted && !ended_ && !dialog.selectedFiles().isEmpty()) {
        const bool isOther = request.other && dialog.selectedNameFilter() == qtText(request.other->filter);
        const auto path = withExtension(dialog.selectedFiles().first(),
                                        isOther ? request.other->extension : request.extension);
        if (mayReplace(path))
            return path;
    }
    return std::nullopt;
}

SaveChoice WindowPrompts::saveChanges(const Text& text)
{
    if (ended_)
        return SaveChoice::cancel;
    MessageBox box(QMessageBox::Question, titled(Caption::questionTitle), text,
                   QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, owner());
    box.setDefaultButton(QMessageBox::Save);
    box.setEscapeButton(QMessageBox::Cancel);
    nameButton(box, QMessageBox::Save, Caption::saveButton);
    nameButton(box, QMessageBox::Discard, Caption::discardButton);
    nameButton(box, QMessageBox::Cancel, Caption::cancelButton);
    const int answer = box.exec();
    if (ended_ || answer == QMessageBox::Cancel)
        return SaveChoice::cancel;
    return answer == QMessageBox::Save ? SaveChoice::save : SaveChoice::discard;
}

void WindowPrompts::endProgram()
{
    ended_ = true;
    endWaits_();
    QCoreApplication::exit();
}

void WindowPrompts::nameButton(QMessageBox& box, int button, Caption caption) const
{
    nameBoxButton(box, static_cast<QMessageBox::StandardButton>(button), texts_, caption);
}

void WindowPrompts::nameButtons(QInputDialog& dialog) const
{
    if (const auto ok = texts_.caption(Caption::okButton); !ok.empty())
        dialog.setOkButtonText(buttonText(ok));
    if (const auto cancel = texts_.caption(Caption::cancelButton); !cancel.empty())
        dialog.setCancelButtonText(buttonText(cancel));
}

void WindowPrompts::prepare(QFileDialog& dialog, const FileRequest& request, Caption accept) const
{
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setWindowTitle(withoutEllipsis(qtText(request.title)));
    dialog.setDirectory(qtPath(request.folder));
    if (!request.shipped.empty())
        offerShipped(dialog, request);
    dialog.setNameFilter(qtText(request.filter));
    const std::pair<QFileDialog::DialogLabel, Caption> labels[] = {
        {QFileDialog::LookIn, Caption::dialogFolder},
        {QFileDialog::FileName, Caption::dialogFileName},
        {QFileDialog::FileType, Caption::dialogFileType},
        {QFileDialog::Accept, accept},
        {QFileDialog::Reject, Caption::cancelButton}};
    for (const auto& [label, caption] : labels) {
        if (const Text text = texts_.caption(caption); !text.empty())
            dialog.setLabelText(label, buttonText(text));
    }
}

// At the side where the dialog has places there; the system's own may have none, so the title names it too.
void WindowPrompts::offerShipped(QFileDialog& dialog, const FileRequest& request) const
{
    dialog.setWindowTitle(dialog.windowTitle() + QStringLiteral(" \u2013 ") +
                          filledCaption(texts_, Caption::shippedTablesIn, {pathText(request.shipped)}));
    dialog.setSidebarUrls({QUrl::fromLocalFile(QDir::homePath()), QUrl::fromLocalFile(qtPath(request.folder)),
                           QUrl::fromLocalFile(qtPath(request.shipped.parent_path()))}); // not twice one name
}

// The folder follows the kind of file.
void WindowPrompts::offerOther(QFileDialog& dialog, const FileRequest& request)
{
    const QString other = qtText(request.other->filter);
    dialog.setNameFilters({qtText(request.filter), other});
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&dialog, other, own = qtPath(request.folder), folder = qtPath(request.other->folder)](
                         const QString& chosen) { dialog.setDirectory(chosen == other ? folder : own); });
}

bool WindowPrompts::mayReplace(const std::filesystem::path& path)
{
    return !QFileInfo::exists(qtPath(path)) ||
           question(texts_.message(Message::replaceFileQuestion, {pathText(path)}));
}

// A box of the main window could come up behind a dialog that stands open over it.
QWidget* WindowPrompts::owner() const
{
    QWidget* const dialog = QApplication::activeModalWidget();
    return dialog != nullptr ? dialog : parent_.data();
}

QString WindowPrompts::titled(Caption caption) const
{
    return boxTitle(texts_, caption);
}

} // namespace karvo
