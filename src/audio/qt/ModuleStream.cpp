#include "audio/qt/ModuleStream.h"

#include <libopenmpt/libopenmpt.hpp>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

namespace tolva {

namespace {

constexpr std::size_t RenderChunkFrames = 1024;

// The quality, 0 to 100, as libopenmpt's interpolation filter: nearest, linear, cubic or
// its windowed sinc, a quarter of the scale each.
int FilterLength(int quality) {
    if (quality <= 25) return 1;
    if (quality <= 50) return 2;
    if (quality <= 75) return 4;
    return 8;
}

} // namespace

ModuleStream::ModuleStream() = default;
ModuleStream::~ModuleStream() = default;

bool ModuleStream::Load(const std::string& bytes, bool loop) {
    Unload();
    if (bytes.empty()) return false;
    try {
        // libopenmpt's remarks about odd files go nowhere: a module that loads plays.
        std::ostringstream log;
        module_ = std::make_unique<openmpt::module>(bytes.data(), bytes.size(), log);
        module_->set_repeat_count(loop ? -1 : 0);
        module_->set_render_param(openmpt::module::RENDER_INTERPOLATIONFILTER_LENGTH, FilterLength(Quality));
    } catch (const std::exception&) {
        module_.reset();
        return false;
    }
    loop_ = loop;
    return true;
}

void ModuleStream::Unload() {
    module_.reset();
    ahead_.clear();
    ended_ = false;
    passesEnded_ = 0;
    level_ = 0;
}

std::int32_t ModuleStream::DurationMs() const {
    return module_ ? static_cast<std::int32_t>(module_->get_duration_seconds() * 1000.0) : 0;
}

std::int32_t ModuleStream::RenderedPositionMs() const {
    if (!module_) return 0;
    // A looping module's position runs on past its length, pass after pass.
    double seconds = module_->get_position_seconds();
    const double length = module_->get_duration_seconds();
    if (loop_ && length > 0) seconds = std::fmod(seconds, length);
    return static_cast<std::int32_t>(seconds * 1000.0);
}

void ModuleStream::SetPositionMs(std::int32_t ms) {
    if (!module_) return;
    module_->set_position_seconds(std::max(0, ms) / 1000.0);
    ahead_.clear();
    ended_ = false;
}

std::int32_t ModuleStream::BufferedMs() const {
    return static_cast<std::int32_t>(ahead_.size() / Channels * 1000 / SampleRate);
}

qint64 ModuleStream::bytesAvailable() const {
    const qint64 own = static_cast<qint64>(ahead_.size()) * 2;
    // While the module goes on there is always more to render.
    return (module_ && !ended_ ? own + RenderChunkFrames * BytesPerFrame : own) + QIODevice::bytesAvailable();
}

void ModuleStream::RenderAhead(std::size_t wantedFrames) {
    std::int16_t chunk[RenderChunkFrames * Channels];
    while (module_ && !ended_ && ahead_.size() / Channels < wantedFrames) {
        const double before = module_->get_position_seconds();
        const std::size_t frames = module_->read_interleaved_stereo(SampleRate, RenderChunkFrames, chunk);
        if (frames == 0) {
            ended_ = true;
            break;
        }
        // The renderer of a looping module counts its position on past the module's
        // length; should it jump back instead, that too ends a pass.
        const double after = module_->get_position_seconds();
        const double length = module_->get_duration_seconds();
        if (loop_ && after < before) ++passesEnded_;
        if (loop_ && length > 0) passesEnded_ = std::max(passesEnded_, static_cast<int>(after / length));
        ahead_.insert(ahead_.end(), chunk, chunk + frames * Channels);
    }
}

qint64 ModuleStream::readData(char* data, qint64 maxSize) {
    const std::size_t askedFrames = static_cast<std::size_t>(std::max<qint64>(0, maxSize)) / BytesPerFrame;
    RenderAhead(askedFrames + SampleRate * RenderAheadMs / 1000);
    const std::size_t frames = std::min(askedFrames, ahead_.size() / Channels);
    const std::size_t samples = frames * Channels;
    std::memcpy(data, ahead_.data(), samples * sizeof(std::int16_t));
    int peak = 0;
    for (std::size_t i = 0; i < samples; ++i) peak = std::max(peak, std::abs(static_cast<int>(ahead_[i])));
    ahead_.erase(ahead_.begin(), ahead_.begin() + static_cast<std::ptrdiff_t>(samples));
    level_ = peak * 100 / 32768;
    if (ended_ && ahead_.empty() && !loop_ && passesEnded_ == 0) passesEnded_ = 1;
    return static_cast<qint64>(samples * sizeof(std::int16_t));
}

} // namespace tolva
