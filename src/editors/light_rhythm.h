// When a light is lit. The times that the descriptions of the CVs leave open stand here and nowhere else.
#pragma once

#include <array>
#include <vector>

namespace karvo
{

struct Rhythm {
    enum class Kind { dark, steady, pulses, wave };
    Kind kind = Kind::dark;
    std::vector<int> pulses{}; // ms, lit and dark in turn, over and over; a wave swells once in all of them
    int delay = 0;             // ms by which it lags behind one without a delay
    bool schematic = false;    // more than times of CVs is in it
};

inline Rhythm steadyRhythm()
{
    return {Rhythm::Kind::steady};
}

Rhythm pulsing(std::vector<int> pulses);

// 0 to 1, `ms` after the beginning.
double levelAt(const Rhythm& rhythm, int ms);

// 0 for one that does not change.
int periodOf(const Rhythm& rhythm);

// Of a beacon by CV67 to CV69; the second one's turn comes half a period later where the two alternate.
Rhythm beaconRhythm(int flash, int pause, int kind, bool second);

// What the pictures show where no description says how it is: shown as schematic.
namespace schematic
{
inline constexpr int doubleFlashGap = 120;  // ms
inline constexpr double dimmedShare = 0.3;  // of the brightness, at standstill
inline constexpr double daytimeShare = 0.5; // of the brightness
inline constexpr int fadeTime = 250;        // ms, of decoders that have no CV24
inline constexpr int indicatorPhase = 400;  // ms, where CV66 has no value
inline constexpr std::array flashing = {60, 540};
inline constexpr int runningStep = 250; // ms that the light stays at each output
inline constexpr std::array flicker = {140, 40, 70, 90, 210, 30, 50, 60, 110, 50, 40, 80, 260, 60};
inline constexpr int flickerShift = 370;   // ms by which each output lags behind the last
inline constexpr int trafficGo = 4000;     // ms of red, and of green
inline constexpr int trafficChange = 1000; // ms of red with yellow, and of yellow
} // namespace schematic

} // namespace karvo
