// All settings in force in plain sentences, each of which leads to the window that changes it.
#pragma once

#include "editors/describe_settings.h"
#include "program/prompts.h"
#include "ui/form.h"

#include <vector>

class QTextBrowser;
class QUrl;

namespace karvo
{

class SettingsPage : public Form
{
    Q_OBJECT

public:
    SettingsPage(const LanguageTables& texts, Prompts& prompts, const char* name, const QString& title,
                 std::vector<DescribedGroup> groups, QWidget* parent = nullptr);

    // The menu item, without "mnu_", of the window that is to open, once it was accepted.
    const std::string& chosen() const { return chosen_; }

private:
    QString asHtml() const;
    void open(const QUrl& link);
    void copy();
    void print();

    Prompts& prompts_;
    std::vector<DescribedGroup> groups_;
    QTextBrowser* page_;
    std::string chosen_;
};

} // namespace karvo
