#pragma once

#include "platform/files/disk_file.h"
#include "platform/platform.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace tarvik::ooxml {

/// An empty folder of its own among the system's temporary files, which no other user may look into; it goes with all
/// that is in it. Those that killed programs left behind go when the next one is made.
class TemporaryFolder {
public:
    /// Throws Failure.
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const noexcept { return path_; }

private:
    std::filesystem::path path_;
    std::optional<SystemFile> lock_; ///< a file in it that is locked as long as the program lives
};

/// Prints a file of these bytes and this name, which is gone afterwards.
void print_copy(Files& files, Printer& printer, TextView name, std::string_view bytes);

} // namespace tarvik::ooxml
