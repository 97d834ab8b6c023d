#pragma once
// A few database connections shared by the server's threads: a thread borrows one for
// one operation and gives it back, so that reads run side by side instead of queueing
// behind one lock. Connections are opened when first needed, up to a fixed number; a
// thread that finds all of them busy waits for one, at most a few seconds.
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace tolva::hiscored {

template <class Connection>
class ConnectionPool {
public:
    using Opener = std::function<std::unique_ptr<Connection>()>;

    ConnectionPool(std::size_t size, Opener open) : size_(size), open_(std::move(open)) {}

    // A borrowed connection, given back when the lease ends. Empty if none could be
    // opened or none came free in time.
    class Lease {
    public:
        Lease() = default;
        Lease(ConnectionPool* pool, std::unique_ptr<Connection> connection)
            : pool_(pool), connection_(std::move(connection)) {}
        Lease(Lease&&) = default;
        Lease& operator=(Lease&&) = delete;
        ~Lease() {
            if (pool_ && connection_) pool_->GiveBack(std::move(connection_));
        }
        explicit operator bool() const { return connection_ != nullptr; }
        Connection* operator->() const { return connection_.get(); }
        Connection& operator*() const { return *connection_; }
        // A connection found broken is closed instead of given back.
        void Discard() {
            connection_.reset();
            if (pool_) pool_->Forget();
            pool_ = nullptr;
        }

    private:
        ConnectionPool* pool_ = nullptr;
        std::unique_ptr<Connection> connection_;
    };

    Lease Borrow(std::chrono::milliseconds wait = std::chrono::seconds(5)) {
        std::unique_lock lock(mutex_);
        if (!ready_.wait_for(lock, wait, [&] { return !idle_.empty() || opened_ < size_; })) return {};
        if (!idle_.empty()) {
            std::unique_ptr<Connection> connection = std::move(idle_.back());
            idle_.pop_back();
            return Lease(this, std::move(connection));
        }
        ++opened_;
        lock.unlock();
        std::unique_ptr<Connection> connection = open_();
        if (!connection) {
            Forget();
            return {};
        }
        return Lease(this, std::move(connection));
    }

    // Gives a connection opened elsewhere (the first, which made the schema) to the pool.
    void Adopt(std::unique_ptr<Connection> connection) {
        const std::lock_guard lock(mutex_);
        ++opened_;
        idle_.push_back(std::move(connection));
    }

private:
    void GiveBack(std::unique_ptr<Connection> connection) {
        {
            const std::lock_guard lock(mutex_);
            idle_.push_back(std::move(connection));
        }
        ready_.notify_one();
    }
    // A lease that ended without its connection (discarded, or never opened).
    void Forget() {
        {
            const std::lock_guard lock(mutex_);
            --opened_;
        }
        ready_.notify_one();
    }

    const std::size_t size_;
    Opener open_;
    std::mutex mutex_;
    std::condition_variable ready_;
    std::vector<std::unique_ptr<Connection>> idle_;
    std::size_t opened_ = 0;
};

} // namespace tolva::hiscored
