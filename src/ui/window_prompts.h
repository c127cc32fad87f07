// Messages and questions as modal boxes, in the language in use.
#pragma once

#include "language/language_tables.h"
#include "program/prompts.h"

#include <QPointer>
#include <QWidget>

#include <functional>

class QFileDialog;
class QInputDialog;
class QMessageBox;

namespace karvo
{

class WindowPrompts : public Prompts
{
public:
    // `endWaits` makes a wait under way, and every later one, report `ended`.
    WindowPrompts(const LanguageTables& texts, std::function<void()> endWaits);

    // The window that the boxes belong to; none before the main window is there.
    void setParentWindow(QWidget* window) { parent_ = window; }

    void message(const Text& text, PromptIcon icon = PromptIcon::none) override;
    void error(const Text& text) override;
    bool question(const Text& text, QuestionKind kind = QuestionKind::usual,
                  ProposedAnswer proposed = ProposedAnswer::no) override;
    std::optional<Text> input(const Text& title, const Text& prompt, const Text& initial) override;
    std::optional<std::size_t> choice(const Text& title, const Text& prompt, const std::vector<Text>& options,
                                      std::size_t current) override;
    std::optional<std::filesystem::path> openFile(const FileRequest& request) override;
    std::vector<std::filesystem::path> openFiles(const FileRequest& request) override;
    std::optional<std::filesystem::path> saveFile(const FileRequest& request) override;
    SaveChoice saveChanges(const Text& text) override;
    void endProgram() override;

    bool hasEnded() const { return ended_; }

private:
    void showBox(const QString& title, const Text& text, PromptIcon icon);
    // Texts stay as they are where the tables have none: before a language is loaded, and with a short
    // language file.
    void nameButton(QMessageBox& box, int button, Caption caption) const;
    void nameButtons(QInputDialog& dialog) const;
    void prepare(QFileDialog& dialog, const FileRequest& request, Caption accept) const;
    void offerShipped(QFileDialog& dialog, const FileRequest& request) const;
    static void offerOther(QFileDialog& dialog, const FileRequest& request);
    bool mayReplace(const std::filesystem::path& path);
    QString titled(Caption caption) const;
    QWidget* owner() const;

    const LanguageTables& texts_;
    std::function<void()> endWaits_;
    QPointer<QWidget> parent_;
    bool ended_ = false;
};

} // namespace karvo
