#pragma once
// The thread the music is mixed on, with an event loop of its own.
//
// The module is rendered when the sound device asks for more, and the device asks through
// timers of the thread its sink lives on. On the game's one thread that would be every
// wait of the game (the hunt delay's pause a brick, a speaker beep, a long step): the
// device would run dry and the music fall silent. So the sink and the module live here,
// and the game's thread reaches them only through Run, which hands a job over and waits
// for it: jobs are short (starting, stopping, reading a position), and this thread never
// waits for the game's.
#include <QThread>

#include <functional>

class QObject;

namespace tolva {

class MusicThread {
public:
    MusicThread();
    // Ends the thread; jobs that made objects on it must have deleted them.
    ~MusicThread();
    MusicThread(const MusicThread&) = delete;
    MusicThread& operator=(const MusicThread&) = delete;

    // Runs `job` on the music thread and returns once it has run.
    void Run(const std::function<void()>& job);

private:
    QThread thread_;
    QObject* context_ = nullptr;   // lives on thread_; jobs are delivered to it
};

} // namespace tolva
