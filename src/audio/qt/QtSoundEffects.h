#pragma once
// The sound effects on screen: one voice through one QAudioSink.
//
// Why not QSoundEffect: it cuts the last ~180 ms of a sample, and it mixes, where the game
// wants one sound at a time with each new one cutting the one before. So the wave file is
// read here (WaveClip), converted to the sink's format, and written whole to the sink in
// push mode. The server takes the whole effect at once, beyond the stream's short buffer
// (which only sets the latency), so no repaint, nested wait or blocking beep of the game
// can starve it. A new sound closes the sink's stream (which drops what is still queued
// there) and opens a fresh one, so the cut is immediate. Whatever the server does not
// take at once is fed on by a timer.
//
// PlayWave asks for an output device at every call, as the game always did: with none, or
// when the sink does not start, the game shows "Unable to init SOUND-DECVICE" and goes
// on. A file that is missing or no wave plays nothing and says nothing. The device is
// opened by the first sound, never by the constructor, so that start-up stays fast.
//
// SpeakerBeep plays a square tone through the same sink and blocks the thread for the
// tone's length (until it has been heard), as the classic speaker beep did; with no
// device it only pauses for that long.
//
// Destroy this object before the application object.
#include "support/platform/Dialogs.h"
#include "support/platform/SoundEffects.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QTimer>

#include <memory>

class QAudioSink;
class QIODevice;

namespace tolva {

class WaveClip;

class QtSoundEffects final : public SoundEffects {
public:
    static constexpr int SampleRate = 44100;
    static constexpr int Channels = 2;

    explicit QtSoundEffects(Dialogs& dialogs);
    ~QtSoundEffects() override;
    QtSoundEffects(const QtSoundEffects&) = delete;
    QtSoundEffects& operator=(const QtSoundEffects&) = delete;

    void PlayWave(const std::string& storedPath, bool wait = false) override;
    void SpeakerBeep(std::int32_t frequency, std::int32_t milliseconds) override;

    // Whether the last sound started has not been heard to its end yet.
    bool Playing() const;

private:
    bool DeviceThere() const;
    void ReportNoDevice();
    // Cuts what plays and starts `clip`; false if the sink could not start.
    bool Start(const WaveClip& clip);
    void Feed();
    // Blocks until the sound has been heard, at least `minimumMs`, at most `limitMs`.
    void BlockUntilHeard(std::int64_t minimumMs, std::int64_t limitMs);

    Dialogs& dialogs_;
    std::unique_ptr<QAudioSink> sink_;
    QIODevice* output_ = nullptr;   // the sink's, valid while it runs
    QByteArray pending_;            // the sound, padded, in the sink's format
    qsizetype written_ = 0;
    qsizetype granted_ = 0;         // the server's buffer for this stream
    std::int64_t soundMs_ = 0;      // the sound's own length, without the padding
    QElapsedTimer started_;
    QTimer feeder_;
};

} // namespace tolva
