#include "audio/qt/ZenkorPlayer.h"

#include "audio/qt/ModuleStream.h"
#include "support/ZenkorModule.h"

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

ZenkorPlayer::ZenkorPlayer() : stream_(std::make_unique<ModuleStream>()) {
    stream_->open(QIODevice::ReadOnly);
    timer1_.setInterval(500);
    QObject::connect(&timer1_, &QTimer::timeout, &timer1_, [this] { Timer1_Tick(); });
    timer1_.start();
}

ZenkorPlayer::~ZenkorPlayer() {
    // The sink reads from the stream: it goes first.
    timer1_.stop();
    if (sink_) sink_->stop();
    sink_.reset();
    if (media_) media_->stop();
}

bool ZenkorPlayer::StartSink() {
    if (QMediaDevices::audioOutputs().isEmpty()) return false;
    if (!sink_) {
        QAudioFormat format;
        format.setSampleRate(ModuleStream::SampleRate);
        format.setChannelCount(ModuleStream::Channels);
        format.setSampleFormat(QAudioFormat::Int16);
        sink_ = std::make_unique<QAudioSink>(QMediaDevices::defaultAudioOutput(), format);
    }
    sink_->setBufferSize(SinkBufferMs * BytesPerMs);
    sink_->setVolume(volume_ / 100.0);
    sink_->start(stream_.get());
    return sink_->error() == QAudio::NoError && Running(*sink_);
}

void ZenkorPlayer::StopSink() {
    if (sink_) sink_->stop();
}

void ZenkorPlayer::PlayMod(const std::string& fileName, bool loop, std::int32_t position) {
    if (!fileName.empty()) modFile_ = fileName;
    StopSink();
    stream_->Unload();
    // One piece at a time: a file of the media player stops too.
    if (media_) media_->stop();
    paused_ = false;
    modFinished_ = false;
    std::string bytes;
    const bool loaded = ReadWholeFile(fileName, bytes, MaxSoundBytes) && stream_->Load(bytes, loop);
    bool sounding = false;
    if (loaded) {
        stream_->SetPositionMs(position);
        sounding = StartSink();
    }
    maxPos_ = stream_->DurationMs();
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
    stream_->Unload();
    modFinished_ = false;
    state_ = StateStopped;
    paused_ = false;
    if (media_) media_->stop();
}

bool ZenkorPlayer::PauseMod() {
    if (!paused_) {
        if (sink_ && stream_->Loaded() && Running(*sink_)) {
            sink_->suspend();
            paused_ = true;
            state_ = StatePaused;
        }
    } else {
        if (sink_) sink_->resume();
        paused_ = false;
        state_ = StatePlaying;
    }
    return paused_;
}

void ZenkorPlayer::SetCurrentPos(std::int32_t position) { stream_->SetPositionMs(position); }

std::int32_t ZenkorPlayer::GetCurrentPos() const {
    if (stream_->Loaded()) {
        if (stream_->Ended()) return maxPos_;
        std::int32_t queued = 0;
        if (sink_ && Running(*sink_)) queued = static_cast<std::int32_t>((sink_->bufferSize() - sink_->bytesFree()) / BytesPerMs);
        return std::max(0, stream_->RenderedPositionMs() - stream_->BufferedMs() - queued);
    }
    if (media_ && media_->playbackState() == QMediaPlayer::PlayingState) return static_cast<std::int32_t>(media_->position());
    return 0;
}

std::int32_t ZenkorPlayer::GetVuMeter() const { return ModuleSounding() && !paused_ ? stream_->Level() : 0; }

void ZenkorPlayer::SetVolume(std::int32_t volume) {
    volume_ = std::clamp(volume, 0, 100);
    if (sink_) sink_->setVolume(volume_ / 100.0);
    if (mediaOutput_) mediaOutput_->setVolume(volume_ / 100.0f);
}

bool ZenkorPlayer::ModuleSounding() const { return stream_->Loaded() && sink_ && Running(*sink_); }

void ZenkorPlayer::Timer1_Tick() {
    const std::int32_t p = GetCurrentPos();
    if (modFinished_ || paused_) return;
    if (stream_->Loaded() && stream_->PassEnded() && maxPos_ >= 2) {
        modFinished_ = true;
        if (Finished) Finished();
    } else if (p > 0) {
        state_ = StatePlaying;
    }
}

} // namespace tolva
