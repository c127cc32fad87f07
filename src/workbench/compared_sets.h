// The two sets that are compared, and what gives the lines their texts.
#pragma once

#include "cvdata/comparison.h"
#include "cvdata/list_file.h"
#include "workbench/workbench.h"

#include <optional>
#include <span>
#include <string_view>

namespace karvo
{

// A model whose description can give the lines their texts.
struct ComparedModel {
    std::string_view menuItem;    // of the compare window
    std::string_view offlineItem; // of the main window: the same description file
    TextView label;               // with its blanks
};

// In the order of the menu.
std::span<const ComparedModel> comparedModels();

// What gives the lines of a list file their texts where no model was chosen: the description of its own
// model, else its own words.
CvTable wordsOf(Workbench& bench, const ListFile& list);
SpeedSteps speedStepsOf(const ListFile& list);

class ComparedSets
{
public:
    // The first side is the set on the bench, where there is one; it must stay as it is meanwhile.
    explicit ComparedSets(Workbench& bench);

    // Loads the description of a model of the menu. False, after a message, when it can not be read.
    bool chooseModel(std::string_view menuItem);

    // Reads a list file as one of the sides. False, after a message, when it can not be read; what is not
    // sound in it is told. The side is then as it was.
    bool openFirst(const std::filesystem::path& path);
    bool openSecond(const std::filesystem::path& path);

    // What the sides are called; empty for one that is missing.
    Text firstName() const;
    Text secondName() const { return second_ ? second_->name : Text(); }

    // "  KV07": of the chosen model, else of the first side's, else of the second's; empty when there is
    // none.
    Text modelLabel() const;

    // Nothing while a side is missing, or, after a message, when the sides' processors differ.
    std::optional<Comparison> compare();

    // Looks a value up: in the second side, else in the first. Nothing for an empty answer or without a side.
    std::optional<Text> lookUp(TextView answer) const;

private:
    struct Side {
        Text name;
        ListFile list;
    };

    std::optional<Side> read(const std::filesystem::path& path);
    bool hasBenchSet() const { return !first_ && !bench_.state.set.isEmpty(); }
    std::optional<CvSide> firstSide() const;
    std::optional<Model> modelOfSides() const;

    Workbench& bench_;
    std::optional<Side> first_; // nothing: the set on the bench
    std::optional<Side> second_;
    const ComparedModel* model_ = nullptr; // the one that was chosen
    CvTable words_;                        // of the chosen model
};

} // namespace karvo
