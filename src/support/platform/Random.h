#pragma once
// The game's random numbers: uniform from 0 up to but not including 1. Seeded once at
// start-up; a test seeds it to replay a run.
#include <cstdint>

namespace tolva {

class Random {
public:
    virtual ~Random() = default;
    virtual double Next() = 0;
    virtual void Seed(std::uint64_t seed) = 0;
};

} // namespace tolva
