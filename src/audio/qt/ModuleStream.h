#pragma once
// A tracker module rendered on demand into 16-bit stereo PCM, as a QIODevice that a
// QAudioSink pulls from.
//
// The sink pulls on the audio back end's schedule, in small periods, from the thread it
// lives on: ZenkorPlayer keeps both on a music thread of their own, so that no wait of
// the game's thread stops the pulls. Every pull first tops up a buffer of at least
// RenderAheadMs of rendered sound, and the sink's own buffer holds more than that again.
// Rendering a period takes well under a millisecond. The stream is not locked: only the
// thread it lives on may touch it.
//
// A looping module never ends; its passes are counted as its position runs past its
// length. A module played once ends when its last rendered sample has been handed to the
// sink; after that the device reads 0 bytes and the sink goes idle.
#include <QIODevice>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace openmpt {
class module;
}

namespace tolva {

class ModuleStream final : public QIODevice {
public:
    // The mixing rate and quality the game sets for its music: 41000 Hz (not 44100), and
    // 51 on the player's scale of 0 to 100, which picks libopenmpt's cubic interpolation.
    static constexpr int SampleRate = 41000;
    static constexpr int Quality = 51;
    static constexpr int Channels = 2;
    static constexpr int BytesPerFrame = Channels * 2;
    static constexpr int RenderAheadMs = 300;

    ModuleStream();
    ~ModuleStream() override;

    // Loads the module from the file's bytes; false, with nothing loaded, if libopenmpt
    // does not take them.
    bool Load(const std::string& bytes, bool loop);
    void Unload();
    bool Loaded() const { return module_ != nullptr; }

    // The module's length and the rendered position in milliseconds.
    std::int32_t DurationMs() const;
    std::int32_t RenderedPositionMs() const;
    void SetPositionMs(std::int32_t ms);
    // Milliseconds of rendered sound waiting here for the sink.
    std::int32_t BufferedMs() const;

    // A pass has ended (a looping module jumped back, or a single one played out).
    bool PassEnded() const { return passesEnded_ > 0; }
    bool Ended() const { return ended_ && ahead_.empty(); }
    // The loudest sample of the last period handed to the sink, 0 to 100.
    std::int32_t Level() const { return level_; }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    void RenderAhead(std::size_t wantedFrames);

    std::unique_ptr<openmpt::module> module_;
    std::vector<std::int16_t> ahead_;   // interleaved, oldest first
    bool loop_ = false;
    bool ended_ = false;
    int passesEnded_ = 0;
    std::int32_t level_ = 0;
};

} // namespace tolva
