#include "ConnectionWatch.h"

#include <sys/socket.h>

#include <vector>

namespace tolva::hiscored {

void ConnectionWatch::Opened(const void* key, int socket, const std::string& address, Clock::time_point now) {
    const std::lock_guard lock(mutex_);
    const auto [where, added] = connections_.try_emplace(key, Watched{socket, address, now, true, false});
    if (added) ++perAddress_[address];
}

void ConnectionWatch::Answered(const void* key) {
    const std::lock_guard lock(mutex_);
    if (const auto found = connections_.find(key); found != connections_.end()) found->second.Waiting = false;
}

void ConnectionWatch::Finished(const void* key, Clock::time_point now) {
    const std::lock_guard lock(mutex_);
    if (const auto found = connections_.find(key); found != connections_.end()) {
        found->second.Waiting = true;
        found->second.Since = now;
    }
}

void ConnectionWatch::Closed(const void* key) {
    const std::lock_guard lock(mutex_);
    const auto found = connections_.find(key);
    if (found == connections_.end()) return;
    if (const auto count = perAddress_.find(found->second.Address); count != perAddress_.end() && --count->second == 0)
        perAddress_.erase(count);
    connections_.erase(found);
}

std::size_t ConnectionWatch::Open() {
    const std::lock_guard lock(mutex_);
    return connections_.size();
}

std::size_t ConnectionWatch::OpenFrom(const std::string& address) {
    const std::lock_guard lock(mutex_);
    const auto found = perAddress_.find(address);
    return found == perAddress_.end() ? 0 : found->second;
}

int ConnectionWatch::Sweep(Clock::time_point now) {
    std::vector<std::string> shut;
    {
        const std::lock_guard lock(mutex_);
        for (auto& [key, watched] : connections_) {
            if (!watched.Waiting || watched.Shut || now - watched.Since < deadline_) continue;
            ::shutdown(watched.Socket, SHUT_RDWR);
            watched.Shut = true;
            shut.push_back(watched.Address);
        }
    }
    const long long seconds = std::chrono::duration_cast<std::chrono::seconds>(deadline_).count();
    for (const std::string& address : shut)
        log_("closed a connection from " + address + ": no whole request within " + std::to_string(seconds) + " s");
    return static_cast<int>(shut.size());
}

void ConnectionWatch::StartSweeping(std::chrono::milliseconds period) {
    sweeper_ = std::thread([this, period] {
        std::unique_lock lock(mutex_);
        while (!wake_.wait_for(lock, period, [this] { return stopping_; })) {
            lock.unlock();
            Sweep(Clock::now());
            lock.lock();
        }
    });
}

void ConnectionWatch::StopSweeping() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (sweeper_.joinable()) sweeper_.join();
}

} // namespace tolva::hiscored
