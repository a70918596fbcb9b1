#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "platform/platform.h"

#include <string>

namespace tarvik {

/// The name of the system's default printer, or nothing.
std::string default_printer();

/// The default printer of the system, to which the suite prints. A missing printer, or nothing that could print the
/// file, is a Failure. `office` must outlive the printer.
class DesktopPrinter final : public Printer {
public:
    explicit DesktopPrinter(libreoffice::LibreOffice& office) : office_(office) {}
    void print(const std::filesystem::path& file, TextView name) override;

private:
    libreoffice::LibreOffice& office_;
};

} // namespace tarvik
