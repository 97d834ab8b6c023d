#include "support/platform/HeadlessPictureStore.h"

#include "support/platform/HeadlessPicture.h"
#include "support/platform/HeadlessPictureStrip.h"

namespace tolva {

std::unique_ptr<PictureHolder> HeadlessPictureStore::CreateHolder(const std::string& name) {
    return std::make_unique<HeadlessPicture>(name);
}

std::unique_ptr<PictureStrip> HeadlessPictureStore::CreateStrip(const std::string& name) {
    return std::make_unique<HeadlessPictureStrip>(name, loop_);
}

} // namespace tolva
