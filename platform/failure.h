#pragma once

#include "platform/text/text.h"

#include <exception>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
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

/// Why the system's call failed, in the user's words, without a point.
Text reason_of(const std::system_error& error);

/// Why a call failed, in the user's words.
struct FileReason {
    int error;
    std::u32string_view words;
};
/// The reasons that only this system knows or has words of its own for.
std::span<const FileReason> own_reasons() noexcept;

/// "无法<action>“<path>”：<reason>。"
Failure file_failure(TextView action, TextView path, int error);

/// Does the work; what the system fails in becomes a Failure that names the path as the user knows it.
template <typename Work>
auto naming_path(TextView action, TextView path, const Work& work)
{
    try {
        return work();
    } catch (const std::system_error& error) { // the file system's own error is one
        throw file_failure(action, path, error.code().default_error_condition().value());
    }
}

} // namespace tarvik
