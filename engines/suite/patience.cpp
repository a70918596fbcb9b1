#include "engines/suite/patience.h"

#include <objbase.h>

#include <future>
#include <thread>

namespace tarvik::windows {

namespace {

constexpr std::chrono::milliseconds between_looks{20};

} // namespace

void Patience::begin(Time patience, Text words)
{
    const std::lock_guard lock(mutex_);
    patience_ = patience;
    words_ = std::move(words);
}

void Patience::know(ApplicationProcess process)
{
    const std::lock_guard lock(mutex_);
    process_ = std::move(process);
}

HRESULT Patience::call(std::function<HRESULT()> work) const
{
    if (is_given_up_) throw libreoffice::ConnectionLost("given up");
    std::packaged_task<HRESULT()> task(std::move(work));
    auto done = task.get_future();
    std::thread([task = std::move(task)]() mutable {
        ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        task();
        task = {}; // objects that it holds go while the thread may still talk to them
        ::CoUninitialize();
    }).detach();
    while (done.wait_for(between_looks) != std::future_status::ready)
        if (is_given_up_ || Clock::now() > deadline_) throw libreoffice::ConnectionLost("given up");
    return done.get();
}

std::optional<Text> Patience::give_up(Time waited)
{
    const std::lock_guard lock(mutex_);
    if (waited < patience_) return std::nullopt;
    is_given_up_ = true;
    if (process_.handle && !::IsWindowVisible(process_.window)) ::TerminateProcess(process_.handle.get(), 1);
    return words_;
}

} // namespace tarvik::windows
