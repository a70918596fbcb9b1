#pragma once

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

} // namespace tarvik
