#include "cvdata/list_search.h"

#include <algorithm>
#include <tuple>

namespace karvo
{

namespace
{

bool holds(TextView text, TextView lowerWord)
{
    return lowerCase(text).find(lowerWord) != Text::npos;
}

// A line's own words count for its first CV alone.
bool placeHolds(const ListLine& line, const CvTable& table, int cv, TextView lowerWord)
{
    if (cv == line.cv ? holds(line.text, lowerWord) || holds(line.name, lowerWord)
                      : holds(cvLabel(cv), lowerWord))
        return true;
    if (cv == 0)
        return false;
    for (const Column column :
         {Column::text, Column::explanation, Column::values, Column::advice, Column::bits}) {
        if (holds(table.at(cv, column), lowerWord))
            return true;
    }
    return false;
}

std::vector<ListHit> placesOf(const MainList& list)
{
    std::vector<ListHit> places;
    for (std::size_t row = 0; row < list.size(); ++row) {
        for (int cv = list[row].cv; cv <= std::max(list[row].cv, list[row].lastCv); ++cv)
            places.push_back({row, cv});
    }
    return places;
}

} // namespace

std::optional<ListHit> nextHit(const MainList& list, const CvTable& table, TextView word,
                               std::optional<ListHit> after)
{
    const Text lowerWord = lowerCase(trimmed(word));
    if (lowerWord.empty())
        return std::nullopt;
    auto places = placesOf(list);
    const auto first = std::find_if(places.begin(), places.end(), [&](const ListHit& place) {
        return !after || std::tie(place.row, place.cv) > std::tie(after->row, after->cv);
    });
    std::rotate(places.begin(), first, places.end());
    for (const ListHit& place : places) {
        if (placeHolds(list[place.row], table, place.cv, lowerWord))
            return place;
    }
    return std::nullopt;
}

} // namespace karvo
