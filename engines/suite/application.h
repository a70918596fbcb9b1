#pragma once

#include "engines/suite/com_object.h"

namespace tarvik::windows {

/// What sets one application of the suite apart from the other.
struct ApplicationKind {
    const wchar_t* name;
    const char32_t* title;
    const wchar_t* files;       ///< its collection of open files
    std::vector<ComValue> quit; ///< the arguments that have it end without saving
};
extern const ApplicationKind workbooks;
extern const ApplicationKind documents;

/// An application of our own that is never shown, asks nothing and runs no macros. It quits with the object, unless
/// somebody has opened a file in it: then it is shown and left to its user.
class Application {
public:
    /// Throws Damage where the application is not installed or does not start.
    Application(const ApplicationKind& kind, std::shared_ptr<Patience> patience);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    ComObject files() const { return object_->object(kind_.files); }
    const ComObject& object() const noexcept { return *object_; }
    /// The object has a window of the application; its process is the application's.
    void look_at_window(const ComObject& owner);

private:
    bool is_somebodys() const;
    void let_go() const;

    const ApplicationKind& kind_;
    std::shared_ptr<Patience> patience_;
    std::optional<ComObject> object_;
    ApplicationProcess process_;
};

} // namespace tarvik::windows
