#pragma once
// A picture holder without a screen: it reads bitmap files itself (BmpFile), so that a
// headless game knows which pictures exist, their sizes and their colours, exactly as the
// game would see them on screen.
#include "support/platform/BmpFile.h"
#include "support/platform/PictureHolder.h"

#include <memory>
#include <string>

namespace tolva {

class HeadlessPicture final : public PictureHolder {
public:
    explicit HeadlessPicture(std::string name) : name_(std::move(name)) {}

    const std::string& Name() const override { return name_; }
    bool LoadFile(const std::string& storedPath) override;
    void Assign(const PictureHolder& other) override;
    void Clear() override;

    bool HasPicture() const override { return image_ != nullptr; }
    double ScaleWidth() const override { return image_ ? image_->Width() : 0; }
    double ScaleHeight() const override { return image_ ? image_->Height() : 0; }
    std::int32_t Point(double x, double y) const override;

    bool Visible() const override { return visible_; }
    void SetVisible(bool visible) override { visible_ = visible; }
    std::int32_t BackColor() const override { return backColor_; }
    void SetBackColor(std::int32_t colour) override { backColor_ = colour; }

    // The stored path of the file last loaded (or taken over by Assign); empty with no
    // picture. Lets a test see which file a holder shows.
    const std::string& Source() const { return source_; }

private:
    std::string name_;
    std::shared_ptr<const BmpFile> image_;   // shared: Assign copies no pixels
    std::string source_;
    bool visible_ = false;
    std::int32_t backColor_ = 0;
};

} // namespace tolva
