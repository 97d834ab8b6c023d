#include "board/qt/QtPictureStore.h"

#include "support/platform/qt/QtPictureHolder.h"
#include "board/qt/QtPictureStrip.h"

namespace tolva {

std::unique_ptr<PictureHolder> QtPictureStore::CreateHolder(const std::string& name) {
    return std::make_unique<QtPictureHolder>(name, host_);
}

std::unique_ptr<PictureStrip> QtPictureStore::CreateStrip(const std::string& name) {
    return std::make_unique<QtPictureStrip>(name, loop_, host_);
}

} // namespace tolva
