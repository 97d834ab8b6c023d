#include "audio/qt/ZenkorPlayer.h"

#include "audio/qt/ModuleStream.h"
#include "support/ZenkorModule.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QAudioSink>
#include <QFile>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QUrl>

#include <algorithm>

namespace tolva {

namespace {

constexpr int BytesPerMs = ModuleStream::SampleRate * ModuleStream::BytesPerFrame / 1000;

bool Running(const QAudioSink& sink) {
    return sink.state() == QAudio::ActiveState || sink.state() == QAudio::IdleState;
}

} // namespace

ZenkorPlayer::ZenkorPlayer() {
    // The stream is the music thread's: the sink that pulls from it lives there too.
    music_.Run([this] {
        stream_ = std::make_unique<ModuleStream>();
        stream_->open(QIODevice::ReadOnly);
    });
    timer1_.setInterval(500);
    QObject::connect(&timer1_, &QTimer::timeout, &timer1_, [this] { Timer1_Tick(); });
    timer1_.start();
}

ZenkorPlayer::~ZenkorPlayer() {
    // The sink reads from the stream: it goes first, and both go on their own thread.
    timer1_.stop();
    music_.Run([this] {
        if (sink_) sink_->stop();
        sink_.reset();
        stream_.reset();
    });
    if (media_) media_->stop();
}

bool ZenkorPlayer::StartSink() {
    // The devices are asked on the game's thread, where the media devices live.
    if (QMediaDevices::audioOutputs().isEmpty()) return false;
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    bool running = false;
    music_.Run([&] {
        if (!sink_) {
            QAudioFormat format;
            format.setSampleRate(ModuleStream::SampleRate);
            format.setChannelCount(ModuleStream::Channels);
            format.setSampleFormat(QAudioFormat::Int16);
            sink_ = std::make_unique<QAudioSink>(device, format);
        }
        sink_->setBufferSize(SinkBufferMs * BytesPerMs);
        sink_->setVolume(volume_ / 100.0);
        sink_->start(stream_.get());
        running = sink_->error() == QAudio::NoError && Running(*sink_);
    });
    return running;
}

void ZenkorPlayer::StopSink() {
    music_.Run([this] {
        if (sink_) sink_->stop();
    });
}

void ZenkorPlayer::PlayMod(const std::string& fileName, bool loop, std::int32_t position) {
    if (!fileName.empty()) modFile_ = fileName;
    StopSink();
    music_.Run([this] { stream_->Unload(); });
    // One piece at a time: a file of the media player stops too.
    if (media_) media_->stop();
    paused_ = false;
    modFinished_ = false;
    std::string bytes;
    bool loaded = ReadWholeFile(fileName, bytes, MaxSoundBytes);
    std::int32_t duration = 0;
    music_.Run([&] {
        loaded = loaded && stream_->Load(bytes, loop);
        if (loaded) stream_->SetPositionMs(position);
        duration = stream_->DurationMs();
    });
    const bool sounding = loaded && StartSink();
    maxPos_ = duration;
    if (sounding) state_ = StatePlaying;
}

void ZenkorPlayer::PlayAnyFile(const std::string& filePath) {
    StopMod();
    if (!filePath.empty()) modFile_ = filePath;
    // Nothing can play without a sound device or without the file: the state stays.
    if (QMediaDevices::audioOutputs().isEmpty() || !FileExists(filePath)) return;
    if (!media_) {
        mediaOutput_ = std::make_unique<QAudioOutput>();
        media_ = std::make_unique<QMediaPlayer>();
        media_->setAudioOutput(mediaOutput_.get());
    }
    mediaOutput_->setVolume(volume_ / 100.0f);
    media_->setSource(QUrl::fromLocalFile(QFile::decodeName(QByteArray::fromStdString(NativePath(filePath)))));
    media_->setLoops(QMediaPlayer::Infinite);
    media_->play();
    if (media_->error() == QMediaPlayer::NoError) state_ = StatePlaying;
}

void ZenkorPlayer::StopMod() {
    StopSink();
    music_.Run([this] { stream_->Unload(); });
    modFinished_ = false;
    state_ = StateStopped;
    paused_ = false;
    if (media_) media_->stop();
}

bool ZenkorPlayer::PauseMod() {
    if (!paused_) {
        bool suspended = false;
        music_.Run([&] {
            if (sink_ && stream_->Loaded() && Running(*sink_)) {
                sink_->suspend();
                suspended = true;
            }
        });
        if (suspended) {
            paused_ = true;
            state_ = StatePaused;
        }
    } else {
        music_.Run([this] {
            if (sink_) sink_->resume();
        });
        paused_ = false;
        state_ = StatePlaying;
    }
    return paused_;
}

void ZenkorPlayer::SetCurrentPos(std::int32_t position) {
    music_.Run([&] { stream_->SetPositionMs(position); });
}

std::int32_t ZenkorPlayer::GetCurrentPos() const {
    bool loaded = false;
    std::int32_t heard = 0;
    music_.Run([&] {
        loaded = stream_->Loaded();
        if (!loaded) return;
        if (stream_->Ended()) {
            heard = maxPos_;
            return;
        }
        std::int32_t queued = 0;
        if (sink_ && Running(*sink_))
            queued = static_cast<std::int32_t>((sink_->bufferSize() - sink_->bytesFree()) / BytesPerMs);
        heard = std::max(0, stream_->RenderedPositionMs() - stream_->BufferedMs() - queued);
    });
    if (loaded) return heard;
    if (media_ && media_->playbackState() == QMediaPlayer::PlayingState) return static_cast<std::int32_t>(media_->position());
    return 0;
}

std::int32_t ZenkorPlayer::GetVuMeter() const {
    if (paused_) return 0;
    std::int32_t level = 0;
    music_.Run([&] {
        if (stream_->Loaded() && sink_ && Running(*sink_)) level = stream_->Level();
    });
    return level;
}

void ZenkorPlayer::SetVolume(std::int32_t volume) {
    volume_ = std::clamp(volume, 0, 100);
    music_.Run([this] {
        if (sink_) sink_->setVolume(volume_ / 100.0);
    });
    if (mediaOutput_) mediaOutput_->setVolume(volume_ / 100.0f);
}

bool ZenkorPlayer::ModuleSounding() const {
    bool sounding = false;
    music_.Run([&] { sounding = stream_->Loaded() && sink_ && Running(*sink_); });
    return sounding;
}

void ZenkorPlayer::Timer1_Tick() {
    const std::int32_t p = GetCurrentPos();
    if (modFinished_ || paused_) return;
    bool passEnded = false;
    music_.Run([&] { passEnded = stream_->Loaded() && stream_->PassEnded(); });
    if (passEnded && maxPos_ >= 2) {
        modFinished_ = true;
        if (Finished) Finished();
    } else if (p > 0) {
        state_ = StatePlaying;
    }
}

} // namespace tolva
