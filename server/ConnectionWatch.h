#pragma once
// The deadline of a whole request. The HTTP library closes a connection that stays
// silent for the timeout, but a client that sends its head one byte a second is never
// silent that long; this watch closes any connection whose request has not arrived
// whole within the deadline, counted from the connection's start or from the end of
// its previous answer (so an idle kept-alive connection goes after as long). Closing
// is a shutdown of the socket: the library then sees the client gone and cleans up
// in its own thread, so nothing is freed under its feet. A connection is forgotten
// before the library closes its socket, so a number reused for a new socket is never
// shut by mistake.
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>

namespace tolva::hiscored {

class ConnectionWatch {
public:
    using Clock = std::chrono::steady_clock;
    using Log = std::function<void(const std::string&)>;

    ConnectionWatch(std::chrono::milliseconds deadline, Log log) : deadline_(deadline), log_(std::move(log)) {}
    ~ConnectionWatch() { StopSweeping(); }
    ConnectionWatch(const ConnectionWatch&) = delete;
    ConnectionWatch& operator=(const ConnectionWatch&) = delete;

    // The events of connection `key` (any pointer that names it while it lives).
    void Opened(const void* key, int socket, const std::string& address, Clock::time_point now = Clock::now());
    void Answered(const void* key);  // the request arrived whole: its clock stops
    void Finished(const void* key, Clock::time_point now = Clock::now());  // answer sent: a new clock
    void Closed(const void* key);

    // How many connections are open, in all and from `address`.
    std::size_t Open();
    std::size_t OpenFrom(const std::string& address);

    // Shuts every connection whose request is overdue at `now`, each once, with a line
    // in the log. Gives how many it shut.
    int Sweep(Clock::time_point now);

    // Sweeps every `period` on a thread of its own until StopSweeping.
    void StartSweeping(std::chrono::milliseconds period);
    void StopSweeping();

private:
    struct Watched {
        int Socket = -1;
        std::string Address;
        Clock::time_point Since;
        bool Waiting = true;  // for a request to arrive whole
        bool Shut = false;
    };

    const std::chrono::milliseconds deadline_;
    Log log_;
    std::mutex mutex_;
    std::unordered_map<const void*, Watched> connections_;
    std::unordered_map<std::string, std::size_t> perAddress_;
    std::thread sweeper_;
    std::condition_variable wake_;
    bool stopping_ = false;
};

} // namespace tolva::hiscored
