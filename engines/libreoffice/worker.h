#pragma once

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace tarvik::libreoffice {

/// A thread that does one piece of work after the other while who asks for it waits and can look after other things.
class Worker {
public:
    using Time = std::chrono::milliseconds;
    using Clock = std::chrono::steady_clock;

    /// `rest` is called on the thread when there was no work for so long; again and again until it gives true.
    Worker(Time until_rest, std::function<bool()> rest);
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    struct Waiting {
        std::function<void(Time waited)> meanwhile; ///< called again and again
        Time limit;
        std::function<Clock::time_point()> clock;
        std::function<void(Time waited)>
            too_long; ///< called again and again behind the limit; it must make the work end
    };
    /// Does the work on the thread and comes back when it has ended; what it throws is thrown here.
    void run(const std::function<void()>& work, const Waiting& waiting);

private:
    void loop();

    Time until_rest_;
    std::function<bool()> rest_;
    std::mutex mutex_;
    std::condition_variable changed_;
    const std::function<void()>* work_ = nullptr; ///< none when it has ended
    std::exception_ptr error_;
    bool is_closing_ = false;
    std::thread thread_;
};

} // namespace tarvik::libreoffice
