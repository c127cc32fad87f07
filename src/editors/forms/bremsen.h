// How a vehicle brakes and keeps its distance: four values, with presets and files of their own.
#pragma once

#include "editors/distance_table.h"
#include "ui/editor_dialog.h"
#include "workbench/workbench.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string_view>

class QLineEdit;

namespace karvo
{

class Bremsen : public EditorDialog
{
    Q_OBJECT

public:
    // With the values of the set on the bench; `preset`: the name of a file whose values of CV52 to CV54 take
    // their place, empty for none.
    Bremsen(Workbench& bench, std::string_view preset, QWidget* parent = nullptr);

    // What is to be written, once the dialog was accepted.
    const WritePlan& plan() const { return plan_; }

private:
    void build();
    void addMenus();

    void showTableValues();
    void loadPreset(std::string_view name);
    void loadPresetTimes(std::string_view name);
    void loadChosenFile();
    void save();
    std::optional<DistanceFile> read(const std::filesystem::path& path);
    std::filesystem::path presetPath(std::string_view name);
    void showValues(const DistanceValues& values, std::size_t first);
    DistanceValues typed() const;
    void checkField(std::size_t place);
    void explain();
    void write();

    Workbench& bench_;
    WritePlan plan_;
    std::array<QLineEdit*, distanceCvCount> fields_{}; // in the order of distanceCvs()
};

} // namespace karvo
