#pragma once

#include "mainwindow/mainwindow.h"

#include <optional>

namespace tarvik {

/// A view's side file in the installation folder. Views do not depend on it: why one cannot be written is reported once
/// for all of them in an action or a report run, and the view is shown all the same.
class ScratchFile {
public:
    /// Clears the file, as every operation does first: one line that holds a CR.
    ScratchFile(Program& program, TextView name);

    /// Cuts the file and writes the view; one of more than a gigabyte is reported and not written.
    void write(const LineSource& lines);
    /// The same for who must not open a box yet: tell_failure() opens it.
    void write_silently(const LineSource& lines);
    void tell_failure();
    /// Whether something could not be written.
    bool failed() const { return failed_; }

private:
    template <typename Work>
    void guarded(Work&& work);
    void clear();
    void write_all(const LineSource& lines);

    Program& program_;
    Text path_;
    bool failed_ = false;
    std::optional<Text> failure_; ///< that has not been reported yet
};

} // namespace tarvik
