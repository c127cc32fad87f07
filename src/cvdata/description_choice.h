// Which files of the program folder describe a decoder.
#pragma once

#include "cvdata/decoder_profile.h"
#include "language/language_code.h"

#include <span>
#include <string>
#include <string_view>

namespace karvo
{

// The description file of a decoder that has been read.
std::string descriptionFileName(const DecoderProfile& profile, LanguageCode language);

// Some files have one name for all languages. Their texts in another language stand in a companion of the
// same layout: "CV_Standart180.txt" has "CV_Standart180_EN.txt". Empty when the file is already in that
// language.
std::string textCompanionName(std::string_view fileName, LanguageCode language);

// A list that the menu shows without a decoder.
struct OfflineList {
    std::string_view menuItem;
    Model model;
    Generation generation;
    // For bus and fire-engine lists: the stem that "1.txt" to "4.txt" complete, by the stored variant 0 to 3.
    // Else empty: the description file is that of the model and generation.
    std::string_view variantStem;
};

// Nothing for an unknown item.
const OfflineList* offlineListOf(std::string_view menuItem);

// All of them, in the menu's order.
std::span<const OfflineList> offlineLists();

// How many variants a list with a stem has.
inline constexpr int automaticVariants = 4;

// Empty for a variant outside 0 to 3.
std::string offlineDescriptionFileName(const OfflineList& list, int variant, LanguageCode language);

// The profile that an offline list stands for: model and generation, without firmware.
DecoderProfile offlineProfile(const OfflineList& list);

// The same while a decoder is on the bench: one of the list's model with firmware V1 has the list of its
// model, but an expert file of its own.
DecoderProfile offlineProfile(const OfflineList& list, const DecoderProfile& onBench);

} // namespace karvo
