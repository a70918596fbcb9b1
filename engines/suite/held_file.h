#pragma once

#include "engines/suite/application.h"

namespace tarvik::windows {

/// Opens a file for reading only.
std::unique_ptr<libreoffice::OpenFile> open_workbook(std::shared_ptr<Application> application,
                                                     std::shared_ptr<Patience> patience,
                                                     const std::filesystem::path& path);
std::unique_ptr<libreoffice::OpenFile> open_document(std::shared_ptr<Application> application,
                                                     std::shared_ptr<Patience> patience,
                                                     const std::filesystem::path& path);

} // namespace tarvik::windows
