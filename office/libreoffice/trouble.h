#pragma once

#include "platform/failure.h"

namespace tarvik::libreoffice {

/// What is wrong with LibreOffice or with a file in its hands, in Chinese. It does not know the file's name.
class Trouble : public std::exception {
public:
    explicit Trouble(Text reason) : reason_(std::move(reason)), utf8_(to_utf8(reason_)) {}

    const Text& reason() const noexcept { return reason_; }
    const char* what() const noexcept override { return utf8_.c_str(); }

private:
    Text reason_;
    std::string utf8_;
};

} // namespace tarvik::libreoffice
