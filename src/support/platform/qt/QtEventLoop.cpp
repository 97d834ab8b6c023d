#include "support/platform/qt/QtEventLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

namespace tolva {
namespace {

class QtTimer final : public Timer {
public:
    explicit QtTimer(bool precise) {
        timer_.setTimerType(precise ? Qt::PreciseTimer : Qt::CoarseTimer);
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            // Qt does not re-enter a timer from its own tick; the flag only guards the
            // case of a tick that switches the timer off and on again inside a wait.
            if (ticking_ || !timer_.isActive()) return;
            ticking_ = true;
            if (OnTick) OnTick();
            ticking_ = false;
        });
    }
    void SetInterval(std::int32_t ms) override { timer_.setInterval(ms < 0 ? 0 : ms); }
    std::int32_t Interval() const override { return timer_.interval(); }
    void SetEnabled(bool enabled) override {
        if (enabled == timer_.isActive()) return;
        if (enabled) timer_.start(); else timer_.stop();
    }
    bool Enabled() const override { return timer_.isActive(); }

private:
    QTimer timer_;
    bool ticking_ = false;
};

} // namespace

QtEventLoop::QtEventLoop() { clock_.start(); }

std::unique_ptr<Timer> QtEventLoop::CreateTimer(bool precise) {
    return std::make_unique<QtTimer>(precise);
}

void QtEventLoop::DoEvents() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void QtEventLoop::WaitUntil(const std::function<bool()>& condition) {
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void QtEventLoop::Pause(std::int32_t ms) {
    if (ms > 0) QThread::msleep(static_cast<unsigned long>(ms));
}

void QtEventLoop::Post(std::function<void()> event) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(event), Qt::QueuedConnection);
}

} // namespace tolva
