#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarvik::libreoffice {

/// A folder for the copies of one file that pass between the program and LibreOffice; it goes with all that is in it.
/// So LibreOffice never touches the file that the user knows.
class ExchangeFolder {
public:
    /// Makes a folder of its own inside of `parent`. Throws Damage, as the other functions do.
    explicit ExchangeFolder(const std::filesystem::path& parent);
    ~ExchangeFolder();
    ExchangeFolder(const ExchangeFolder&) = delete;
    ExchangeFolder& operator=(const ExchangeFolder&) = delete;

    std::filesystem::path place(const std::filesystem::path& name) const { return path_ / name; }
    std::filesystem::path put(const std::filesystem::path& name, std::string_view bytes) const;
    std::string take(const std::filesystem::path& name) const;

private:
    std::filesystem::path path_;
};

} // namespace tarvik::libreoffice
