// The sound effects and the music through a real audio path: a PulseAudio server of this
// program's own with a null sink, whose monitor is recorded with parec while the game's
// code plays. The checks are on what the sink really received: sound while something
// plays, the pitch of a beep, silence after a stop or a cut.
//
// The server is this program's alone, not the test run's, so that no other test playing
// at the same time can sound in the recording; for the same reason all the checks run in
// one test, one after the other. Only where no PulseAudio can start at all is it skipped.
#include "audio/qt/QtSoundEffects.h"
#include "audio/qt/ZenkorPlayer.h"
#include "testsupport/ScriptedDialogs.h"

#include <QDir>
#include <QFile>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <memory>
#include <utility>

using namespace tolva;

namespace {

const std::string GameData = std::string(TOLVA_GAME_DIR) + "/data/";

bool NullSinkReachable() {
    QProcess pactl;
    pactl.start("pactl", {"list", "short", "sinks"});
    if (!pactl.waitForFinished(3000) || pactl.exitCode() != 0) return false;
    return pactl.readAllStandardOutput().contains("tolva_null");
}

// A PulseAudio server with the null sink tolva_null, for this program alone.
class PulseServer {
public:
    bool Start(std::string& why) {
        if (QStandardPaths::findExecutable("pulseaudio").isEmpty() || QStandardPaths::findExecutable("parec").isEmpty()) {
            why = "pulseaudio or parec is not installed";
            return false;
        }
        if (!folder_.isValid()) {
            why = "no temporary folder for the server";
            return false;
        }
        const QString runtime = folder_.path();
        QDir().mkpath(runtime + "/pulse");
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("XDG_RUNTIME_DIR", runtime);
        env.insert("HOME", runtime);
        server_.setProcessEnvironment(env);
        server_.start("pulseaudio", {"--daemonize=no", "--exit-idle-time=-1", "--disallow-exit", "-n",
                                     "--load=module-null-sink sink_name=tolva_null", "--load=module-native-protocol-unix"});
        const QByteArray address = ("unix:" + runtime + "/pulse/native").toLocal8Bit();
        qputenv("PULSE_SERVER", address);
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 5000) {
            if (server_.state() == QProcess::NotRunning) break;
            if (NullSinkReachable()) return true;
            QTest::qWait(100);
        }
        why = "the private PulseAudio server did not come up: " + server_.readAllStandardError().toStdString();
        return false;
    }
    ~PulseServer() {
        if (server_.state() != QProcess::NotRunning) {
            server_.kill();
            server_.waitForFinished(2000);
        }
    }

private:
    QTemporaryDir folder_;
    QProcess server_;
};

// What the null sink plays, as 16-bit stereo at 44.1 kHz, from parec. An idle null sink
// gives its monitor nothing, so pacat keeps it busy with silence: the recording then runs
// on at the pace of the clock, and a place in it is a moment. parec records into a file
// rather than a pipe: a test that blocks (a beep, a waited sound) must not stall parec on
// a full pipe, or the server would drop what the sink played meanwhile.
class MonitorRecording {
public:
    MonitorRecording() : file_(folder_.filePath("monitor.raw")) {
        silence_.setStandardInputFile("/dev/zero");
        silence_.start("pacat", {"--playback", "-d", "tolva_null", "--raw", "--format=s16le", "--rate=44100",
                                 "--channels=2", "--latency-msec=50"});
        silence_.waitForStarted(3000);
        parec_.setStandardOutputFile(file_.fileName());
        parec_.start("parec", {"-d", "tolva_null.monitor", "--raw", "--format=s16le", "--rate=44100", "--channels=2",
                               "--latency-msec=20"});
        parec_.waitForStarted(3000);
        // parec takes a while to connect on a busy machine: the recording starts when the
        // first tenth of a second has come in.
        QElapsedTimer clock;
        clock.start();
        while (After(20) < 4 * 4410 && clock.elapsed() < 5000) {
        }
    }
    ~MonitorRecording() {
        for (QProcess* process : {&parec_, &silence_}) {
            process->kill();
            process->waitForFinished(2000);
        }
    }
    // Lets `ms` of real time pass, serving events, and gives the place in the recording.
    qsizetype After(int ms) {
        QTest::qWait(ms);
        if (!file_.isOpen()) file_.open(QIODevice::ReadOnly);
        data_ += file_.readAll();
        return data_.size() / 4 * 4;
    }
    qsizetype Now() { return After(0); }
    // The longest run, in milliseconds, of frames that are all zero between two places:
    // what the sink played when nothing reached it.
    double LongestDigitalSilenceMs(qsizetype from, qsizetype to) const {
        const auto* s = reinterpret_cast<const std::int16_t*>(data_.constData());
        qsizetype run = 0;
        qsizetype longest = 0;
        for (qsizetype i = from / 2; i + 1 < to / 2; i += 2) {
            run = s[i] == 0 && s[i + 1] == 0 ? run + 1 : 0;
            longest = std::max(longest, run);
        }
        return longest / 44.1;
    }
    // The root mean square of the left channel between two places, 0 to 32768.
    double Rms(qsizetype from, qsizetype to) const {
        const auto* s = reinterpret_cast<const std::int16_t*>(data_.constData());
        double sum = 0;
        qsizetype n = 0;
        for (qsizetype i = from / 2; i + 1 < to / 2; i += 2, ++n) sum += double(s[i]) * s[i];
        return n == 0 ? 0 : std::sqrt(sum / n);
    }
    // The pitch of the left channel between two places, from its sign changes.
    double Pitch(qsizetype from, qsizetype to) const {
        const auto* s = reinterpret_cast<const std::int16_t*>(data_.constData());
        int changes = 0;
        for (qsizetype i = from / 2 + 2; i + 1 < to / 2; i += 2) changes += (s[i] > 0) != (s[i - 2] > 0);
        return changes / 2.0 / ((to - from) / 4 / 44100.0);
    }

private:
    QTemporaryDir folder_;
    QFile file_;
    QProcess silence_;
    QProcess parec_;
    QByteArray data_;
};

constexpr double Silent = 30;    // what the null sink gives when nothing plays is 0
constexpr double Sounding = 300;

// A ProTracker module of one pattern that ends by a pattern break on its fourth row: at
// the default speed it lasts 4 x 6 ticks of 20 ms. Sample 1 is 1,000 words of a square
// wave at full volume; the other thirty are empty.
std::string ShortModule() {
    std::string sample(30, '\0'), empty(30, '\0');
    empty[29] = 1;   // a loop of one word: no loop
    sample = empty, sample[22] = 1000 >> 8, sample[23] = static_cast<char>(1000 & 0xFF), sample[25] = 64;
    std::string pattern(64 * 4 * 4, '\0');
    pattern[0] = 428 >> 8, pattern[1] = static_cast<char>(428 & 0xFF), pattern[2] = 0x10;   // period 428, sample 1
    pattern[3 * 16 + 2] = 0x0D;                                                             // row 3: pattern break
    std::string m = "short" + std::string(15, '\0') + sample;
    for (int i = 1; i < 31; ++i) m += empty;
    m += std::string{'\1', '\177'} + std::string(128, '\0') + "M.K." + pattern;
    for (int i = 0; i < 2000; ++i) m += static_cast<char>((i / 16) % 2 ? 60 : -60);
    return m;
}

void WaveAndDefaultModuleSoundAndStopMakesSilence(MonitorRecording& rec) {
    ScriptedDialogs dialogs;
    QtSoundEffects effects(dialogs);
    ZenkorPlayer player;

    const qsizetype quietFrom = rec.Now();
    EXPECT_LT(rec.Rms(quietFrom, rec.After(200)), Silent);

    // A wave effect, 1.1 seconds of data\9.wav, started without waiting.
    QElapsedTimer clock;
    clock.start();
    effects.PlayWave(GameData + "9.wav");
    EXPECT_LT(clock.elapsed(), 300);
    EXPECT_TRUE(effects.Playing());
    const qsizetype waveFrom = rec.After(150);
    EXPECT_GT(rec.Rms(waveFrom, rec.After(500)), Sounding);
    while (effects.Playing() && clock.elapsed() < 3000) rec.After(20);
    EXPECT_FALSE(effects.Playing());
    const qsizetype afterWave = rec.After(150);
    EXPECT_LT(rec.Rms(afterWave, rec.After(250)), Silent);

    // The default module, looping, until StopMod.
    player.PlayMod(GameData + "0.mod", true, 0);
    EXPECT_EQ(player.State(), MusicPlayer::StatePlaying);
    EXPECT_GT(player.MaxPos(), 2000);
    const qsizetype musicFrom = rec.After(400);
    EXPECT_GT(rec.Rms(musicFrom, rec.After(800)), Sounding);
    EXPECT_GT(player.GetCurrentPos(), 400);
    EXPECT_LT(player.GetCurrentPos(), 3000);
    EXPECT_GT(player.GetVuMeter(), 0);
    EXPECT_EQ(player.ModFileName(), GameData + "0.mod");

    player.StopMod();
    EXPECT_EQ(player.State(), MusicPlayer::StateStopped);
    EXPECT_EQ(player.GetVuMeter(), 0);
    const qsizetype stopFrom = rec.After(150);
    EXPECT_LT(rec.Rms(stopFrom, rec.After(400)), Silent);
    EXPECT_TRUE(dialogs.ShownBoxes().empty());
}

void ANewSoundCutsTheOldOneAndWaitReturnsAtItsEnd(MonitorRecording& rec) {
    ScriptedDialogs dialogs;
    QtSoundEffects effects(dialogs);

    effects.PlayWave(GameData + "7.wav");   // two seconds
    rec.After(150);
    QElapsedTimer clock;
    clock.start();
    effects.PlayWave(GameData + "8.wav", true);   // 0.3 seconds, waited for
    const qint64 waited = clock.elapsed();
    EXPECT_GE(waited, 290);
    EXPECT_LT(waited, 800);
    EXPECT_FALSE(effects.Playing());
    // Nothing of the long sound is left after the short one.
    const qsizetype from = rec.After(150);
    EXPECT_LT(rec.Rms(from, rec.After(500)), Silent);

    // A file that is not a wave (the reader's own test has every kind) plays nothing,
    // even waited for.
    effects.PlayWave(GameData + "14.wav", true);
    EXPECT_FALSE(effects.Playing());
    EXPECT_TRUE(dialogs.ShownBoxes().empty());
}

void SpeakerBeepSoundsItsPitchAndBlocksForItsLength(MonitorRecording& rec) {
    ScriptedDialogs dialogs;
    QtSoundEffects effects(dialogs);
    const qsizetype before = rec.Now();

    QElapsedTimer clock;
    clock.start();
    effects.SpeakerBeep(1000, 300);
    const qint64 blocked = clock.elapsed();
    EXPECT_GE(blocked, 300);
    EXPECT_LT(blocked, 600);
    const qsizetype after = rec.After(300);
    // The loud part of the recording is the tone.
    constexpr qsizetype Step = 4 * 441;   // 10 ms
    qsizetype toneFrom = -1;
    qsizetype toneTo = -1;
    for (qsizetype at = before; at + Step <= after; at += Step) {
        if (rec.Rms(at, at + Step) > Sounding) {
            if (toneFrom < 0) toneFrom = at;
            toneTo = at + Step;
        }
    }
    ASSERT_GE(toneFrom, 0) << "the beep was not heard";
    EXPECT_NEAR((toneTo - toneFrom) / 4 / 44.1, 300, 30);
    EXPECT_NEAR(rec.Pitch(toneFrom + Step, toneTo - Step), 1000, 30);
}

void ModuleEndRaisesFinishedOnceAndLoopingGoesOn(MonitorRecording& rec) {
    QTemporaryDir folder;
    const std::string path = folder.filePath("short.mod").toStdString();
    std::ofstream(path, std::ios::binary) << ShortModule();
    ZenkorPlayer player;
    int finished = 0;
    player.Finished = [&] { ++finished; };

    player.PlayMod(path, false, 0);
    EXPECT_EQ(player.State(), MusicPlayer::StatePlaying);
    EXPECT_NEAR(player.MaxPos(), 480, 10);
    QElapsedTimer clock;
    clock.start();
    while (finished == 0 && clock.elapsed() < 3000) rec.After(50);
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(player.GetCurrentPos(), player.MaxPos());
    const qsizetype endFrom = rec.After(100);
    EXPECT_LT(rec.Rms(endFrom, rec.After(600)), Silent);   // Timer1 has looked again meanwhile
    EXPECT_EQ(finished, 1);

    // Looping: the end of the first pass raises Finished, and the module plays on.
    finished = 0;
    player.PlayMod(path, true, 0);
    clock.restart();
    while (finished == 0 && clock.elapsed() < 3000) rec.After(50);
    EXPECT_EQ(finished, 1);
    const qsizetype loopFrom = rec.Now();
    EXPECT_GT(rec.Rms(loopFrom, rec.After(600)), Sounding);
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(player.State(), MusicPlayer::StatePlaying);
    EXPECT_LT(player.GetCurrentPos(), player.MaxPos());

    // Pause and resume.
    EXPECT_TRUE(player.PauseMod());
    EXPECT_EQ(player.State(), MusicPlayer::StatePaused);
    EXPECT_EQ(player.GetVuMeter(), 0);
    const qsizetype pausedFrom = rec.After(150);
    EXPECT_LT(rec.Rms(pausedFrom, rec.After(300)), Silent);
    EXPECT_FALSE(player.PauseMod());
    EXPECT_EQ(player.State(), MusicPlayer::StatePlaying);
    const qsizetype resumedFrom = rec.After(150);
    EXPECT_GT(rec.Rms(resumedFrom, rec.After(300)), Sounding);

    // A file that does not load leaves the state as it was, and an empty name keeps the
    // file name remembered.
    player.StopMod();
    player.PlayMod(folder.filePath("missing.mod").toStdString(), true, 0);
    EXPECT_EQ(player.State(), MusicPlayer::StateStopped);
    EXPECT_EQ(player.ModFileName(), folder.filePath("missing.mod").toStdString());
    player.PlayMod("", true, 0);
    EXPECT_EQ(player.State(), MusicPlayer::StateStopped);
    EXPECT_EQ(player.ModFileName(), folder.filePath("missing.mod").toStdString());
}

void TheMusicPlaysOnWhileTheGamesThreadIsBlocked(MonitorRecording& rec) {
    ZenkorPlayer player;
    player.PlayMod(GameData + "0.mod", true, 0);
    ASSERT_EQ(player.State(), MusicPlayer::StatePlaying);
    const qsizetype from = rec.After(400);
    // The game's thread waits as it does in a long hunt delay or a beep: no event, no
    // timer of its own runs for a second and a half.
    QThread::msleep(1500);
    const qsizetype to = rec.After(300);
    EXPECT_GT(rec.Rms(from, to), Sounding);
    EXPECT_LT(rec.LongestDigitalSilenceMs(from, to), 30.0);
    player.StopMod();
}

void OtherFilesPlayThroughTheMediaPlayerUntilStopMod(MonitorRecording& rec) {
    ZenkorPlayer player;
    player.PlayAnyFile(GameData + "9.wav");
    EXPECT_EQ(player.State(), MusicPlayer::StatePlaying);
    const qsizetype from = rec.After(500);
    EXPECT_GT(rec.Rms(from, rec.After(600)), Sounding);
    player.StopMod();
    EXPECT_EQ(player.State(), MusicPlayer::StateStopped);
    const qsizetype stopFrom = rec.After(150);
    EXPECT_LT(rec.Rms(stopFrom, rec.After(300)), Silent);
}

} // namespace

TEST(AudioOutput, EffectsAndMusicAreHeardAndStopsAreSilent) {
    PulseServer server;
    std::string why;
    if (!server.Start(why)) GTEST_SKIP() << "PulseAudio cannot start here, so nothing can be heard: " << why;
    MonitorRecording rec;
    const std::pair<const char*, void (*)(MonitorRecording&)> steps[] = {
        {"a wave, the default module, StopMod", WaveAndDefaultModuleSoundAndStopMakesSilence},
        {"a sound cut by the next, waiting, a bad file", ANewSoundCutsTheOldOneAndWaitReturnsAtItsEnd},
        {"the speaker beep", SpeakerBeepSoundsItsPitchAndBlocksForItsLength},
        {"the end of a module, looping, pausing", ModuleEndRaisesFinishedOnceAndLoopingGoesOn},
        {"the music while the thread is blocked", TheMusicPlaysOnWhileTheGamesThreadIsBlocked},
        {"the media player", OtherFilesPlayThroughTheMediaPlayerUntilStopMod},
    };
    for (const auto& [what, step] : steps) {
        SCOPED_TRACE(what);
        step(rec);
    }
}
