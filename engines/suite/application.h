#pragma once

#include "engines/suite/com_object.h"

namespace tarvik::windows {

/// What tells one application of the suite from the other.
struct ApplicationKind {
    const wchar_t* name;
    const wchar_t* program; ///< the file of its process
    const char32_t* title;
    int no_alerts;
    std::vector<ComValue> quit; ///< the arguments that have it end without saving
};

/// One hidden application in a process of its own, which stands in the job of this name: whoever ends the job ends the
/// process, and so does the end of this program. It shows no question and runs no macros. It quits with the object.
class Application {
public:
    /// Throws Damage where the application is not installed or does not start.
    Application(const ApplicationKind& kind, const std::string& job);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    const ComObject& object() const noexcept { return *object_; }

private:
    struct Started {
        ComObject object;
        std::shared_ptr<void> process;
    };
    Application(const ApplicationKind& kind, Started started);
    static Started start(const ApplicationKind& kind, const std::string& job);

    const ApplicationKind& kind_;
    std::optional<ComObject> object_;
    std::shared_ptr<void> process_;
};

/// The name of the event that is set when the job of this name is ended: an application that only just starts stands in
/// no job yet.
std::wstring end_of_job(const std::string& job);

} // namespace tarvik::windows
