#include "support/platform/SeededRandom.h"

namespace tolva {

double SeededRandom::Next() {
    // The top 53 bits as a fraction: every value is a multiple of 2^-53 below 1, so the
    // result can never round up to 1 the way a float conversion of a 64-bit draw can.
    return static_cast<double>(engine_() >> 11) * (1.0 / 9007199254740992.0);
}

} // namespace tolva
