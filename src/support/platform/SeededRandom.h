#pragma once
// The random numbers of the game on every platform: a 64-bit Mersenne twister, so that a
// seed replays the same run anywhere.
#include "support/platform/Random.h"

#include <random>

namespace tolva {

class SeededRandom final : public Random {
public:
    explicit SeededRandom(std::uint64_t seed = 1) : engine_(seed) {}
    double Next() override;
    void Seed(std::uint64_t seed) override { engine_.seed(seed); }

private:
    std::mt19937_64 engine_;
};

} // namespace tolva
