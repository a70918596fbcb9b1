#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <sys/types.h>

namespace tarvik::libreoffice {

/// One hidden LibreOffice with a profile, a pipe and a process group of its own. A guardian beside it ends the whole
/// group and removes the folder when this program ends, however it does.
class OfficeProcess {
public:
    /// `folder` holds the profile; it must be there. Throws std::system_error when no process can be started.
    OfficeProcess(const std::filesystem::path& programs, const std::filesystem::path& folder);
    /// Ends the group at once; the folder stays.
    ~OfficeProcess();
    OfficeProcess(const OfficeProcess&) = delete;
    OfficeProcess& operator=(const OfficeProcess&) = delete;

    const std::string& pipe() const noexcept { return pipe_; }
    pid_t group() const noexcept { return office_; }
    bool has_ended();
    /// Ends the group at once, from any thread; a call that waits for it then fails.
    void kill() const noexcept;

private:
    std::filesystem::path temporary_; ///< of what LibreOffice makes for itself
    std::string pipe_;
    pid_t office_ = -1, guardian_ = -1;
    int guardian_line_ = -1; ///< when it closes unsaid, the guardian acts
    bool has_ended_ = false;
};

} // namespace tarvik::libreoffice
