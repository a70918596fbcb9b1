#pragma once

#include "platform/text/text.h"

#include <exception>
#include <string>
#include <utility>

namespace tarvik {

/// A failed operation, with the text that the user is to read. It travels from the place of the failure to the one
/// place that tells the user; what() gives the same text in UTF-8.
class Failure : public std::exception {
public:
    explicit Failure(Text message) : message_(std::move(message)), utf8_(to_utf8(message_)) {}

    const Text& message() const noexcept { return message_; }
    const char* what() const noexcept override { return utf8_.c_str(); }

private:
    Text message_;
    std::string utf8_;
};

} // namespace tarvik
