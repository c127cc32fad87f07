// The main window without a decoder: what it shows and does, step by step, as tests/data/shell tells it.
#include "shell/window_bench.h"
#include "support/case_table.h"

#include <QCheckBox>
#include <QDir>
#include <QKeySequence>
#include <QSpinBox>

namespace karvo::test
{

class WindowSteps : public FilesBench
{
public:
    WindowSteps()
    {
        state.userFolders.speedSteps.own = state.userFolders.distances.own = folder.path().toStdString();
        addAnswers();
        addPreparations();
        addActs();
        addViews();
        activate();
    }
    // What is seen then: what a view is for, and after an act the line of the current CV.
    std::string carryOut(const std::string& step, const std::string& words)
    {
        const auto known = steps_.find(step);
        const auto equals = std::min(words.find('='), words.size());
        return known == steps_.end()
                   ? "no such step"
                   : known->second(words.substr(0, equals), words.substr(std::min(equals + 1, words.size())));
    }

private:
    using Words = const std::string&; // those before and behind a "="

    // Of what comes up with the next act.
    void addAnswers()
    {
        prepare("box", [this](Words part, Words button) {
            expect("box", [part, button](QWidget& box) {
                const auto told = dynamic_cast<QMessageBox&>(box).text().toStdString();
                EXPECT_NE(told.find(part), std::string::npos) << told;
                for (QAbstractButton* const one : box.findChildren<QAbstractButton*>()) {
                    if (one->text().toStdString() == button)
                        return one->click();
                }
                box.close();
                EXPECT_EQ(button, "");
            });
        });
        prepare("input", [this](Words title, Words typed) {
            driver.expectInput(QString::fromStdString(title), QString::fromStdString(typed));
        });
        prepare("file", [this](Words what, Words chosen) { expectDialog(what, chosen); });
        prepare("sheet", [this](Words button, Words entries) {
            expect("sheet", [button, entries](QWidget& sheet) {
                for (const auto& entry : wordsOf(entries)) {
                    const auto colon = entry.find(':');
                    auto& field = test::find<QWidget>(sheet, entry.substr(0, colon));
                    field.setProperty(qobject_cast<QSpinBox*>(&field) != nullptr ? "value" : "checked",
                                      std::stoi(entry.substr(colon + 1)));
                }
                test::click(sheet, button);
            });
        });
        prepare("window", [this](Words name, Words) {
            expect("window", [name](QWidget& dialog) {
                EXPECT_EQ(dialog.objectName().toStdString(), name);
                dialog.close();
            });
        });
    }
    void addPreparations()
    {
        prepare("put", [this](Words name, Words content) { put(name, content); });
        prepare("missing", [this](Words name, Words) { files.content.erase(state.programFolder / name); });
        prepare("upper", [this](Words cv, Words limit) {
            state.set.table.at(std::stoi(cv), Column::upperLimit) = textFromUtf8(limit);
        });
        prepare("knows", [this](Words cv, Words text) {
            state.set.expert[std::stoi(cv)].knowledge = textFromUtf8(text);
        });
        prepare("identified", [this](auto...) { state.link.identified = true; });
        prepare("receiver", [this](auto...) {
            state.set.profile.model = Model::receiver;
            state.link.typeCode = TypeCode::receiver;
            view.listChanged();
        });
        prepare("f5", [this](auto...) { state.set.profile.generation = Generation::f5; });
        prepare("start", [this](Words timer, Words) { find<QTimer>(timer).start(100000); });
    }
    void addActs()
    {
        act("list", [this](auto...) { showOfflineList(); });
        act("cv", [this](Words cv, Words) { chooseCv(std::stoi(cv)); });
        act("row", [this](Words row, Words) { list().setCurrentRow(std::stoi(row)); });
        act("choose", [this](Words item, Words) { choose(item); });
        act("click", [this](Words button, Words) { click(button); });
        act("change", [this](Words cv, Words value) { change(std::stoi(cv), std::stoi(value)); });
        act("type", [this](Words field, Words typed) { type(field.c_str(), typed.c_str()); });
        act("add", [this](Words field, Words typed) {
            QTest::keyClicks(&find<QLineEdit>(field), QString::fromStdString(typed));
        });
        act("port", [this](Words place, Words) { find<QComboBox>("COM").setCurrentIndex(std::stoi(place)); });
        act("focus", [this](Words field, Words) { find<QWidget>(field).setFocus(); });
        act("key", [this](Words control, Words name) { key(control.c_str(), keyOf(name)); });
        act("press", [this](Words name, Words) { press(keyOf(name)); });
        act("close", [this](auto...) { window->close(); });
    }
    void addViews()
    {
        // "*" behind what is disabled.
        steps_["shown"] = [this](Words names, Words) {
            return ofEach(names, [this](Words name) {
                const auto& control = find<QWidget>(name);
                const auto text = QDir::fromNativeSeparators(control.property("text").toString())
                                      .replace(folder.path(), QStringLiteral("FOLDER"));
                return text.toStdString() + (control.isEnabled() ? ";" : "*;");
            });
        };
        steps_["tips"] = [this](Words names, Words) {
            return ofEach(names, [this](Words name) {
                return portable(find<QObject>(name).property("toolTip").toString().toStdString()) + ";";
            });
        };
        steps_["enabled"] = [this](Words names, Words) {
            return ofEach(names,
                          [this](Words name) { return item("mnu_" + name).isEnabled() ? name + " " : ""; });
        };
        steps_["lines"] = [this](Words cvs, Words) {
            return ofEach(cvs, [this](Words cv) { return lineOf(std::stoi(cv)) + ";"; });
        };
        steps_["held"] = [this](Words cvs, Words) {
            return ofEach(cvs, [this](Words cv) { return std::to_string(held(std::stoi(cv))) + " "; });
        };
        steps_["ticked"] = [this](auto...) {
            return ofEach("128 64 32 16 8 4 2 1", [this](Words weight) {
                return find<QCheckBox>("Check" + weight).isChecked() ? weight + " " : "";
            });
        };
        steps_["checked"] = [this](Words items, Words) {
            return ofEach(items, [this](Words name) { return item(name).isChecked() ? name + " " : ""; });
        };
        // A box's words, and in brackets why it is disabled.
        steps_["bit"] = [this](Words name, Words) {
            const auto& box = find<QCheckBox>(name);
            const auto words = box.text().replace(QChar(0x2007), u' ').trimmed();
            return (words + (box.isEnabled() ? QString() : " (" + box.toolTip() + ")")).toStdString();
        };
        steps_["ticking"] = [this](Words timer, Words) {
            return find<QTimer>(timer).isActive() ? "yes" : "no";
        };
        steps_["focused"] = [this](auto...) { return window->focusWidget()->objectName().toStdString(); };
        steps_["title"] = [this](auto...) {
            return window->windowTitle().toStdString() + (window->isWindowModified() ? " *" : "");
        };
        steps_["count"] = [this](auto...) { return std::to_string(list().count()); };
        steps_["stored"] = [this](Words key, Words) { return utf8FromText(settings.values[key]); };
        steps_["path"] = [this](auto...) { return state.set.listPath.filename().string(); };
        steps_["holds"] = [this](Words name, Words part) { return holds(name, part) ? "yes" : "no"; };
        steps_["kept"] = [this](auto...) { return isKept() ? "yes" : "no"; };
        steps_["ended"] = [this](auto...) { return prompts.hasEnded() ? "yes" : "no"; };
        steps_["readonly"] = [this](Words name, Words) {
            return find<QLineEdit>(name).isReadOnly() ? "yes" : "no";
        };
        steps_["open"] = [this](auto...) { return window->isVisible() ? "yes" : "no"; };
        steps_["order"] = [this](Words first, Words) { return tabOrder(find<QWidget>(first)); };
    }
    // From a control on, around to it again.
    static std::string tabOrder(const QWidget& first)
    {
        std::string order;
        const QWidget* widget = &first;
        do {
            widget = widget->nextInFocusChain();
            if (widget->focusPolicy() & Qt::TabFocus && widget->isEnabled() && widget->isVisible())
                order += widget->objectName().toStdString() + " ";
        } while (widget != &first);
        return order;
    }
    static std::string ofEach(const std::string& names, const std::function<std::string(Words)>& seen)
    {
        std::string all;
        for (const auto& name : wordsOf(names))
            all += seen(name);
        return all;
    }
    static Qt::Key keyOf(const std::string& name)
    {
        return QKeySequence::fromString(QString::fromStdString(name))[0].key();
    }
    void prepare(const char* name, const std::function<void(Words, Words)>& step)
    {
        steps_[name] = [step](Words first, Words second) {
            step(first, second);
            return std::string();
        };
    }
    void act(const char* name, const std::function<void(Words, Words)>& step)
    {
        steps_[name] = [this, step](Words first, Words second) {
            step(first, second);
            EXPECT_TRUE(QTest::qWaitFor([this] { return driver.isDone(); })) << first;
            return list().currentItem() == nullptr ? std::string() : line();
        };
    }

    std::map<std::string, std::function<std::string(Words, Words)>> steps_;
};

// "case" begins anew with what it shows; the other steps follow each other.
TEST(Hauptform, EachStepShowsWhatItShould)
{
    std::optional<WindowSteps> steps;
    std::string name;
    for (const auto& [step, words, shown] : casesOf<3>("shell/window_steps.txt")) {
        if (step == "case") {
            name = words;
            steps.reset();
            steps.emplace();
        } else {
            EXPECT_EQ(steps->carryOut(step, words), shown) << name << ": " << step << "|" << words;
        }
    }
}

// Whatever comes next: nothing happens but one box, and the number can be mended.
TEST(Hauptform, NothingActsBeforeATypedNumberIsMended)
{
    for (const auto& [step, words] : casesOf<2>("shell/held_up_acts.txt")) {
        WindowSteps bench;
        bench.showOfflineList();
        bench.chooseCv(29);
        bench.type("CV_Nummer", "200");
        bench.expectBoxWith("CV200");
        EXPECT_EQ(bench.carryOut(step, words), "CV29 = 6");
        QTest::qWait(20); // a second box would be unexpected
        EXPECT_EQ(bench.field("CV_Nummer") + " " + bench.field("CV_Wert"), "200 6") << words;
        EXPECT_TRUE(bench.item("mnu_german").isChecked() && bench.state.link.portNumber == 5) << words;
        EXPECT_TRUE(!bench.port.isOpen() && bench.window->isVisible() && bench.hasFocus("CV_Nummer"))
            << words;
        bench.key("CV_Nummer", Qt::Key_Escape);
        EXPECT_EQ(bench.field("CV_Nummer"), "29") << words;
    }
}

} // namespace karvo::test
