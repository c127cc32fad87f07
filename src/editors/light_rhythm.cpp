#include "editors/light_rhythm.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace karvo
{

namespace
{

// Narrow as the beam of a rotating mirror that comes round.
double waveLevel(int phase, int period)
{
    const double angle = 2 * std::numbers::pi * phase / period;
    return std::pow((1 + std::cos(angle)) / 2, 3);
}

} // namespace

Rhythm pulsing(std::vector<int> pulses)
{
    return {Rhythm::Kind::pulses, std::move(pulses)};
}

int periodOf(const Rhythm& rhythm)
{
    return std::accumulate(rhythm.pulses.begin(), rhythm.pulses.end(), 0);
}

double levelAt(const Rhythm& rhythm, int ms)
{
    const int period = periodOf(rhythm);
    if (period <= 0)
        return rhythm.kind == Rhythm::Kind::steady ? 1 : 0;
    int phase = (ms - rhythm.delay) % period;
    phase += phase < 0 ? period : 0;
    if (rhythm.kind == Rhythm::Kind::wave)
        return waveLevel(phase, period);
    bool lit = true;
    for (const int pulse : rhythm.pulses) {
        if (phase < pulse)
            return lit ? 1 : 0;
        phase -= pulse;
        lit = !lit;
    }
    return 0;
}

Rhythm beaconRhythm(int flash, int pause, int kind, bool second)
{
    const bool twice = kind == 1 || kind == 3;
    Rhythm rhythm =
        twice ? pulsing({flash, schematic::doubleFlashGap, flash, pause}) : pulsing({flash, pause});
    if (kind == 4)
        rhythm.kind = Rhythm::Kind::wave;
    if (second && kind >= 2)
        rhythm.delay = periodOf(rhythm) / 2;
    rhythm.schematic = kind != 0;
    return rhythm;
}

} // namespace karvo
