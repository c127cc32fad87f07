#include "cvdata/described_set.h"

#include "cvdata/cv_use.h"

namespace karvo
{

namespace
{

// A description without a value here says that the model has no such CV.
constexpr int optionalCv = 153;

void takeRows(CvSet& set, LibraryDescription description)
{
    set.table = std::move(description.content->table);
    set.descriptionLines = std::move(description.content->lines);
    set.rowCount = description.content->rowCount;
    set.descriptionPath = std::move(description.file);
}

} // namespace

CvSet setOf(const DecoderProfile& profile, LibraryDescription description)
{
    CvSet set;
    set.profile = profile;
    set.modelCode = modelCode(profile.model);
    takeRows(set, std::move(description));
    return set;
}

void valuesInto(CvTable& table, const CvImage& image)
{
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        const bool hasNone = cv == optionalCv && table.at(cv, Column::value).empty();
        if (table.describes(cv) && !hasNone)
            table.setValue(cv, image[static_cast<std::size_t>(cv)]);
    }
}

void describeAgain(CvSet& set, LibraryDescription description)
{
    CvTable& table = description.content->table;
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        table.at(row, Column::value) = set.table.at(row, Column::value);
        table.at(row, Column::sharedValue) = set.table.at(row, Column::sharedValue);
    }
    takeRows(set, std::move(description));
}

void takeWords(CvSet& set, const LibraryDescription& description)
{
    const CvTable& table = description.content->table;
    const auto unused = unusedCvOf(table);
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        if (!set.table.describes(row) || !table.describes(row))
            continue;
        // What the list's decoder lacks stays unused in every language.
        takeTexts(set.table, row, table, isUsed(set.table, row) ? row : unused.value_or(row));
    }
    set.descriptionPath = description.file;
}

void takeTexts(CvTable& table, int row, const CvTable& other, int otherRow)
{
    for (const Column column :
         {Column::text, Column::explanation, Column::values, Column::advice, Column::bits, Column::words})
        table.at(row, column) = other.at(otherRow, column);
}

void takeKnowledge(CvSet& set, ExpertKnowledge knowledge, std::vector<LibraryFault>& faults)
{
    faults.insert(faults.end(), knowledge.faults.begin(), knowledge.faults.end());
    set.expertPath = std::move(knowledge.file);
    set.expert = std::move(knowledge.entries);
}

} // namespace karvo
