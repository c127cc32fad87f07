// The DCC addresses of a decoder, from its CVs.
#pragma once

#include "cvdata/cv_table.h"

namespace karvo
{

// A long address is split plainly over two CVs: no offset is added to its high part.
constexpr int longAddress(int high, int low)
{
    return high * 256 + low;
}

constexpr int highPartOf(int address)
{
    return address / 256;
}

constexpr int lowPartOf(int address)
{
    return address % 256;
}

// Which form the addresses have, and whether the second one counts, with the weight of the bit that says so.
inline constexpr int configurationCv = 29;
inline constexpr int longAddressWeight = 32;
inline constexpr int modeCv = 21;
inline constexpr int secondAddressWeight = 2;

// Whether a CV holds an address of the vehicle, or a part of one. CV29 and CV21 put them to use.
constexpr bool isAddressPart(int cv)
{
    return cv == 1 || cv == 3 || (cv >= 15 && cv <= 18);
}

// Whether an address is made of it: a part of one, and CV29, which chooses the form.
constexpr bool isAddressCv(int cv)
{
    return isAddressPart(cv) || cv == configurationCv;
}

// Whether CV29 (bit 5) selects the long form, for both addresses.
bool usesLongAddresses(const CvTable& table);

// CV1, or CV17 and CV18; empty when the CV has no value.
Text firstAddress(const CvTable& table);

// CV3, or CV15 and CV16.
Text secondAddress(const CvTable& table);

// Whether CV21 (bit 1) makes the decoder answer to its second address too.
bool answersToSecondAddress(const CvTable& table);

} // namespace karvo
