#pragma once

#include "platform/platform.h"

#include <filesystem>
#include <string_view>

namespace tarvik::ooxml {

/// An empty folder of its own among the system's temporary files; it goes with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const noexcept { return path_; }

private:
    std::filesystem::path path_;
};

/// Prints a file of these bytes and this name, which is gone afterwards.
void print_copy(Files& files, Printer& printer, TextView name, std::string_view bytes);

} // namespace tarvik::ooxml
