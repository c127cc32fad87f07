#include "platform/qt_locale_info.h"

#include <algorithm>

#ifdef Q_OS_WIN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace karvo
{

namespace
{

struct Country {
    QLocale::Territory territory;
    TextView abbreviation;
};

// clang-format off
constexpr Country countries[] = {
    {QLocale::Albania, u"ALB"},
    {QLocale::Andorra, u"AND"},
    {QLocale::Armenia, u"ARM"},
    {QLocale::Austria, u"AUT"},
    {QLocale::Azerbaijan, u"AZE"},
    {QLocale::Belarus, u"BLR"},
    {QLocale::Belgium, u"BEL"},
    {QLocale::BosniaAndHerzegovina, u"BIH"},
    {QLocale::Bulgaria, u"BGR"},
    {QLocale::Croatia, u"HRV"},
    {QLocale::Cyprus, u"CYP"},
    {QLocale::Czechia, u"CZE"},
    {QLocale::Denmark, u"DNK"},
    {QLocale::Estonia, u"EST"},
    {QLocale::FaroeIslands, u"FRO"},
    {QLocale::Finland, u"FIN"},
    {QLocale::France, u"FRA"},
    {QLocale::Georgia, u"GEO"},
    {QLocale::Germany, u"DEU"},
    {QLocale::Gibraltar, u"GIB"},
    {QLocale::Greece, u"GRC"},
    {QLocale::Greenland, u"GRL"},
    {QLocale::Hungary, u"HUN"},
    {QLocale::Iceland, u"ISL"},
    {QLocale::Ireland, u"IRL"},
    {QLocale::Italy, u"ITA"},
    {QLocale::Kosovo, u"XKX"},
    {QLocale::Latvia, u"LVA"},
    {QLocale::Liechtenstein, u"LIE"},
    {QLocale::Lithuania, u"LTU"},
    {QLocale::Luxembourg, u"LUX"},
    {QLocale::Macedonia, u"MKD"},
    {QLocale::Malta, u"MLT"},
    {QLocale::Moldova, u"MDA"},
    {QLocale::Monaco, u"MCO"},
    {QLocale::Montenegro, u"MNE"},
    {QLocale::Netherlands, u"NLD"},
    {QLocale::Norway, u"NOR"},
    {QLocale::Poland, u"POL"},
    {QLocale::Portugal, u"PRT"},
    {QLocale::Romania, u"ROU"},
    {QLocale::Russia, u"RUS"},
    {QLocale::SanMarino, u"SMR"},
    {QLocale::Serbia, u"SRB"},
    {QLocale::Slovakia, u"SVK"},
    {QLocale::Slovenia, u"SVN"},
    {QLocale::Spain, u"ESP"},
    {QLocale::Sweden, u"SWE"},
    {QLocale::Switzerland, u"CHE"},
    {QLocale::Turkey, u"TUR"},
    {QLocale::Ukraine, u"UKR"},
    {QLocale::UnitedKingdom, u"GBR"},
    {QLocale::VaticanCity, u"VAT"},
    {QLocale::Argentina, u"ARG"},
    {QLocale::Bahamas, u"BHS"},
    {QLocale::Barbados, u"BRB"},
    {QLocale::Belize, u"BLZ"},
    {QLocale::Bolivia, u"BOL"},
    {QLocale::Brazil, u"BRA"},
    {QLocale::Canada, u"CAN"},
    {QLocale::Chile, u"CHL"},
    {QLocale::Colombia, u"COL"},
    {QLocale::CostaRica, u"CRI"},
    {QLocale::Cuba, u"CUB"},
    {QLocale::DominicanRepublic, u"DOM"},
    {QLocale::Ecuador, u"ECU"},
    {QLocale::ElSalvador, u"SLV"},
    {QLocale::FrenchGuiana, u"GUF"},
    {QLocale::Guadeloupe, u"GLP"},
    {QLocale::Guatemala, u"GTM"},
    {QLocale::Guyana, u"GUY"},
    {QLocale::Haiti, u"HTI"},
    {QLocale::Honduras, u"HND"},
    {QLocale::Jamaica, u"JAM"},
    {QLocale::Martinique, u"MTQ"},
    {QLocale::Mexico, u"MEX"},
    {QLocale::Nicaragua, u"NIC"},
    {QLocale::Panama, u"PAN"},
    {QLocale::Paraguay, u"PRY"},
    {QLocale::Peru, u"PER"},
    {QLocale::PuertoRico, u"PRI"},
    {QLocale::Suriname, u"SUR"},
    {QLocale::TrinidadAndTobago, u"TTO"},
    {QLocale::UnitedStates, u"USA"},
    {QLocale::Uruguay, u"URY"},
    {QLocale::Venezuela, u"VEN"},
    {QLocale::Australia, u"AUS"},
    {QLocale::NewZealand, u"NZL"},
};
// clang-format on

} // namespace

TextView countryAbbreviation(QLocale::Territory territory)
{
    const auto* found =
        std::find_if(std::begin(countries), std::end(countries),
                     [territory](const Country& country) { return country.territory == territory; });
    return found == std::end(countries) ? TextView() : found->abbreviation;
}

Text QtLocaleInfo::countryAbbreviation() const
{
#ifdef Q_OS_WIN
    wchar_t abbreviation[16] = {};
    const int length = GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SABBREVCTRYNAME, abbreviation, 16);
    return length > 0 ? Text(abbreviation, abbreviation + length - 1) : Text();
#else
    return Text(karvo::countryAbbreviation(QLocale::system().territory()));
#endif
}

} // namespace karvo
