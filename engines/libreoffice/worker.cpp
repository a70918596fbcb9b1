#include "engines/libreoffice/worker.h"

#include <utility>

namespace tarvik::libreoffice {

namespace {

constexpr Worker::Time between_looks{50};

} // namespace

Worker::Worker(Time until_rest, std::function<bool()> rest)
    : until_rest_(until_rest), rest_(std::move(rest)), thread_([this] { loop(); })
{
}

Worker::~Worker()
{
    {
        const std::lock_guard lock(mutex_);
        is_closing_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void Worker::run(const std::function<void()>& work, const Waiting& waiting)
{
    const auto started = waiting.clock();
    std::unique_lock lock(mutex_);
    error_ = nullptr;
    work_ = &work;
    changed_.notify_all();
    while (!changed_.wait_for(lock, between_looks, [this] { return work_ == nullptr; })) {
        lock.unlock();
        const auto waited = std::chrono::duration_cast<Time>(waiting.clock() - started);
        if (waiting.meanwhile) waiting.meanwhile(waited);
        if (waited > waiting.limit) waiting.too_long(waited);
        lock.lock();
    }
    if (error_) std::rethrow_exception(std::exchange(error_, nullptr));
}

void Worker::loop()
{
    const auto is_asked = [this] { return work_ != nullptr || is_closing_; };
    std::unique_lock lock(mutex_);
    for (bool may_rest = false;;) {
        if (!may_rest) changed_.wait(lock, is_asked);
        else if (!changed_.wait_for(lock, until_rest_, is_asked)) {
            lock.unlock();
            may_rest = !rest_();
            lock.lock();
            continue;
        }
        if (is_closing_) return;
        const auto& work = *work_;
        lock.unlock();
        std::exception_ptr error;
        try {
            work();
        } catch (...) {
            error = std::current_exception();
        }
        lock.lock();
        error_ = std::exchange(error, nullptr);
        work_ = nullptr;
        may_rest = true;
        changed_.notify_all();
    }
}

} // namespace tarvik::libreoffice
