#include "link/save_path_read.h"

#include "link/identification.h"

#include <algorithm>
#include <optional>

namespace karvo
{

namespace
{

constexpr std::size_t lastZeroedCv = 1030;

ReadEnd readInto(Link& link, CvImage& image)
{
    if (!EnsurePortOpen(link))
        return ReadEnd::ended;
    std::optional<ReadGuard> guard(std::in_place, link);
    switch (askForPresence(link, Pointer::hourglass)) {
    case ExchangeEnd::ended:
        return ReadEnd::ended;
    case ExchangeEnd::timedOut:
        link.port.close();
        guard.reset(); // the hourglass goes before the box comes
        return reportNoReplyToRead(link);
    case ExchangeEnd::replied:
        break;
    }
    return fetchBlock(link, image);
}

} // namespace

ReadEnd readForSave(Link& link, CvImage& image)
{
    const CvImage before = image;
    std::fill(image.begin() + 1, image.begin() + lastZeroedCv + 1, std::uint8_t{0});
    const auto end = readInto(link, image);
    if (end != ReadEnd::read)
        image = before;
    return end;
}

} // namespace karvo
