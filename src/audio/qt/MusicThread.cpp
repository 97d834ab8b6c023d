#include "audio/qt/MusicThread.h"

#include <QObject>

namespace tolva {

MusicThread::MusicThread() : context_(new QObject) {
    thread_.setObjectName("music");
    context_->moveToThread(&thread_);
    thread_.start(QThread::HighPriority);
}

MusicThread::~MusicThread() {
    thread_.quit();
    thread_.wait();
    // The thread is over: nothing can deliver to the context any more.
    delete context_;
}

void MusicThread::Run(const std::function<void()>& job) {
    if (QThread::currentThread() == &thread_) {
        job();
        return;
    }
    QMetaObject::invokeMethod(context_, job, Qt::BlockingQueuedConnection);
}

} // namespace tolva
