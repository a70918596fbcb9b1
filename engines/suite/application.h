#pragma once

#include "engines/suite/com.h"

namespace tarvik::windows {

/// What sets one application of the suite apart from the other.
struct ApplicationKind {
    const wchar_t* name;
    const char32_t* title;
    const wchar_t* files; ///< its collection of open files
    /// The arguments that have it open a file to read only, and quit without saving.
    ComObject::Values (*open)(const std::filesystem::path& path);
    ComObject::Values quit;
};
extern const ApplicationKind workbooks;
extern const ApplicationKind documents;

/// An application of our own that is never shown, asks nothing and runs no macros. It quits with the object, unless
/// somebody has opened a file in it: then it is shown and left to its user.
class Application : public std::enable_shared_from_this<Application> {
public:
    /// Throws Damage where the application is not installed or does not start.
    Application(const ApplicationKind& kind, std::shared_ptr<Patience> patience);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Opens a file for reading only; it keeps the application.
    std::unique_ptr<libreoffice::OpenFile> open(const std::filesystem::path& path);
    bool is_of(const ApplicationKind& kind) const noexcept { return &kind == &kind_; }
    const ComObject& object() const noexcept { return *object_; }
    Patience& patience() const noexcept { return *patience_; }

private:
    ComObject files() const { return object_->object(kind_.files); }
    bool is_somebodys() const { return files().get(L"Count").as_count() > 0; }
    void let_go() const;
    void look_at_window(const ComObject& owner);

    const ApplicationKind& kind_;
    std::shared_ptr<Patience> patience_;
    std::optional<ComObject> object_;
    ApplicationProcess process_;
};

} // namespace tarvik::windows
