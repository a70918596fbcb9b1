#pragma once

#include <cstddef>
#include <future>
#include <system_error>
#include <utility>

namespace tarvik {

/// Runs the work in a thread of its own, or at once where it is not worth one or the system has none to give. The work
/// must touch nothing that the caller touches before get(); the future's end waits for it in any case.
template <typename Work>
auto in_background(Work work, bool worth_a_thread = true) -> std::future<decltype(work())>
{
    if (worth_a_thread) {
        try {
            return std::async(std::launch::async, work);
        } catch (const std::system_error&) { // NOLINT(bugprone-empty-catch): there is a way without a thread
        }
    }
    std::packaged_task<decltype(work())()> task(std::move(work));
    task();
    return task.get_future();
}

/// Calls `work` with the beginning and the end of two halves of so many things, and where there are enough of them
/// with both at once: what it does for the one must touch nothing that it does for the other.
template <typename Work>
void in_halves(std::size_t count, std::size_t worth_a_thread, const Work& work)
{
    const std::size_t half = count < worth_a_thread ? 0 : count / 2;
    auto first = in_background([&] { work(std::size_t{0}, half); }, half > 0);
    work(half, count);
    first.get();
}

} // namespace tarvik
