#include "link/series_write.h"

namespace karvo
{

namespace
{

constexpr std::chrono::milliseconds pauseAfterWrite{100};

// No notices of success as long as it lives.
class SeriesUnderWay
{
public:
    explicit SeriesUnderWay(LinkState& state) : state_(state) { state_.seriesUnderWay = true; }
    ~SeriesUnderWay() { state_.seriesUnderWay = false; }
    SeriesUnderWay(const SeriesUnderWay&) = delete;
    SeriesUnderWay& operator=(const SeriesUnderWay&) = delete;

private:
    LinkState& state_;
};

} // namespace

std::array<WriteEnd, seriesLength> writeSeries(Link& link, const std::array<int, seriesLength>& values,
                                               const Text& onlyFor)
{
    std::array<WriteEnd, seriesLength> ends;
    ends.fill(WriteEnd::ended);
    const SeriesUnderWay quiet(link.state);
    for (std::size_t i = 0; i < seriesLength; ++i) {
        const int cv = firstSeriesCv + static_cast<int>(i);
        link.view.showStatus(link.view.statusText() + u" " + textFromNumber(cv) + u" ");
        ends[i] = writeCv(link, {.cv = cv, .value = values[i], .onlyFor = onlyFor});
        if (ends[i] == WriteEnd::ended || link.wait.pause(pauseAfterWrite) == WaitResult::ended)
            break;
    }
    return ends;
}

} // namespace karvo
