#include "audio/qt/QtSoundEffects.h"

#include "audio/WaveClip.h"
#include "shared/GameText.h"
#include "support/ZenkorModule.h"

#include <QAudioSink>
#include <QElapsedTimer>
#include <QMediaDevices>
#include <QThread>

#include <algorithm>

namespace tolva {

namespace {

constexpr int BytesPerFrame = QtSoundEffects::Channels * 2;
constexpr int BytesPerMs = QtSoundEffects::SampleRate * BytesPerFrame / 1000;
// The stream's buffer at the server: its latency.
constexpr int MinQueuedMs = 100;
// From the server taking a sound to its being heard.
constexpr qint64 OutputLatencyMs = 40;

} // namespace

QtSoundEffects::QtSoundEffects(Dialogs& dialogs) : dialogs_(dialogs) {
    feeder_.setInterval(20);
    QObject::connect(&feeder_, &QTimer::timeout, &feeder_, [this] { Feed(); });
}

QtSoundEffects::~QtSoundEffects() {
    feeder_.stop();
    if (sink_) sink_->stop();
}

bool QtSoundEffects::DeviceThere() const { return !QMediaDevices::audioOutputs().isEmpty(); }

void QtSoundEffects::ReportNoDevice() {
    dialogs_.MessageBox("Unable to init SOUND-DECVICE", std::string(GameTitle), MessageIcon::Exclamation,
                        MessageButtons::Ok);
}

void QtSoundEffects::PlayWave(const std::string& storedPath, bool wait) {
    if (!DeviceThere()) {
        ReportNoDevice();
        return;
    }
    const std::optional<WaveClip> clip = WaveClip::Load(storedPath);
    if (!clip) return;
    const WaveClip played = clip->ConvertedTo(SampleRate, Channels);
    if (!Start(played)) {
        ReportNoDevice();
        return;
    }
    // The wait is bounded by the length of what was handed to the device, and the
    // output's latency, whatever the file's header says.
    if (wait) BlockUntilHeard(0, played.DurationMs() + 2 * OutputLatencyMs + MinQueuedMs);
}

void QtSoundEffects::SpeakerBeep(std::int32_t frequency, std::int32_t milliseconds) {
    if (milliseconds <= 0) return;
    if (!DeviceThere() || !Start(WaveClip::SquareTone(frequency, milliseconds, SampleRate).ConvertedTo(SampleRate, Channels))) {
        Pause(milliseconds);
        return;
    }
    BlockUntilHeard(milliseconds, milliseconds + 200);
}

bool QtSoundEffects::Start(const WaveClip& clip) {
    feeder_.stop();
    if (!sink_) {
        QAudioFormat format;
        format.setSampleRate(SampleRate);
        format.setChannelCount(Channels);
        format.setSampleFormat(QAudioFormat::Int16);
        sink_ = std::make_unique<QAudioSink>(QMediaDevices::defaultAudioOutput(), format);
    }
    // Closing the stream drops whatever of the last sound is still queued: the cut.
    sink_->stop();
    output_ = nullptr;
    const auto& samples = clip.Samples();
    pending_ = QByteArray(reinterpret_cast<const char*>(samples.data()), static_cast<qsizetype>(samples.size() * 2));
    written_ = 0;
    soundMs_ = clip.DurationMs();
    // A short buffer keeps the latency low; the server takes the whole sound all the same,
    // beyond the buffer, and plays it out without asking the thread for more.
    sink_->setBufferSize(MinQueuedMs * BytesPerMs);
    output_ = sink_->start();
    if (output_ == nullptr || sink_->error() != QAudio::NoError) {
        output_ = nullptr;
        return false;
    }
    // The server starts playing once its buffer is full: a sound shorter than the buffer it
    // granted is padded with silence up to it.
    granted_ = sink_->bufferSize() / BytesPerFrame * BytesPerFrame;
    if (pending_.size() < granted_) pending_.append(granted_ - pending_.size(), '\0');
    started_.start();
    Feed();
    return true;
}

void QtSoundEffects::Feed() {
    while (output_ != nullptr && written_ < pending_.size()) {
        const qint64 done = output_->write(pending_.constData() + written_, pending_.size() - written_);
        if (done <= 0) break;
        written_ += done;
    }
    // What the server did not take now goes on at the feeder's pace.
    if (output_ != nullptr && written_ < pending_.size()) {
        if (!feeder_.isActive()) feeder_.start();
    } else {
        feeder_.stop();
    }
}

bool QtSoundEffects::Playing() const {
    if (!sink_ || output_ == nullptr) return false;
    // The server's own counts (bytes free, time processed) are not kept up to date while
    // the thread is blocked, so the end is reckoned from the clock: the sound starts as
    // soon as it is written, and is over its length and the output's latency later.
    return written_ < pending_.size() || started_.elapsed() < soundMs_ + OutputLatencyMs;
}

void QtSoundEffects::BlockUntilHeard(std::int64_t minimumMs, std::int64_t limitMs) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < limitMs) {
        Feed();
        if (clock.elapsed() >= minimumMs && !Playing()) break;
        QThread::msleep(2);
    }
}

} // namespace tolva
