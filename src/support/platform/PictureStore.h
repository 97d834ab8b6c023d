#pragma once
// Where picture holders and picture strips come from. The board asks the store for each
// of its holders and strips once, when it is made, and keeps them for the run. A Qt store
// makes them on the board's widget (so that a strip or the bonus screen shows over the
// board); the headless store reads the files itself and plays strips on the virtual clock.
#include "support/platform/PictureHolder.h"
#include "support/platform/PictureStrip.h"

#include <memory>
#include <string>

namespace tolva {

class PictureStore {
public:
    virtual ~PictureStore() = default;

    // An empty holder, hidden, back colour 0.
    virtual std::unique_ptr<PictureHolder> CreateHolder(const std::string& name) = 0;
    // A still strip with no picture, hidden, interval 40 ms, frame height 20.
    virtual std::unique_ptr<PictureStrip> CreateStrip(const std::string& name) = 0;
};

} // namespace tolva
