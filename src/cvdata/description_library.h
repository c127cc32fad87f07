// What the program folder knows of a decoder, in the words of a language: its description, and what experts
// know beyond it (layouts in docs/files.md).
#pragma once

#include "cvdata/decoder_profile.h"
#include "cvdata/description_file.h"
#include "cvdata/expert_file.h"
#include "language/language_code.h"
#include "language/language_tables.h"
#include "program/files.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace karvo
{

// What is wrong with a file of the program folder.
struct LibraryFault {
    enum class Kind {
        cannotOpen,
        notADescription,
        notAnExpertFile,
        wordsMissing, // those of the language: the file keeps its own
        linesLeftOut,
        cutOff
    };
    Kind kind;
    std::filesystem::path file;
    std::size_t count = 0; // linesLeftOut: how many
    int line = 0;          // the first of them; cutOff: the last of the file. 1 is the header line
};

struct LibraryDescription {
    std::filesystem::path file;
    std::optional<Description> content;  // nothing: the file can not be read, or is none
    std::vector<LibraryFault> faults;    // why not; or what is wrong with its words
    std::optional<LibraryFault> leftOut; // of the file itself
};

struct ExpertKnowledge {
    std::filesystem::path file;
    std::map<int, ExpertEntry> entries; // by CV number
    std::vector<LibraryFault> faults;
};

// Opens the files and joins them. It tells nobody of a fault: that goes back with what was read.
class DescriptionLibrary
{
public:
    DescriptionLibrary(Files& files, const std::filesystem::path& folder, LanguageCode language,
                       const LanguageTables& texts, bool opensExpertFiles)
        : files_(files),
          folder_(folder),
          language_(language),
          texts_(texts),
          opensExpertFiles_(opensExpertFiles)
    {
    }

    // A description file with the texts in the language; where the file that would have them is missing, its
    // own. What the firmware of `profile` lacks is unused in it; where its date is not known, the advice says
    // from which one on there is a CV.
    LibraryDescription describe(const std::string& fileName, const DecoderProfile& profile = {}) const;

    // What an expert file says of the CVs that a table uses. Without expert mode it stays closed.
    ExpertKnowledge expertKnowledge(const std::string& fileName, const CvTable& table) const;

private:
    std::optional<Bytes> contentOf(const std::filesystem::path& file) const;
    void takeWords(LibraryDescription& description, const std::string& companionName) const;
    void takeWords(ExpertKnowledge& knowledge, const std::string& companionName) const;

    Files& files_;
    const std::filesystem::path& folder_;
    LanguageCode language_;
    const LanguageTables& texts_;
    bool opensExpertFiles_;
};

} // namespace karvo
