#pragma once

#include "mainwindow/mainwindow.h"

#include <memory>

namespace tarvik {

/// A view's side file in the installation folder. Views do not depend on it: what cannot be written is told once, and
/// the view is shown all the same.
class ScratchFile {
public:
    /// Clears the file, as every operation does first: one line that holds a CR. `told` is for an operation that clears
    /// several files: the user has heard of the folder already.
    ScratchFile(Program& program, TextView name, bool told = false);

    /// Cuts the file and begins the view.
    void open();
    void write_line(TextView line);
    void write_source(const LineSource& lines);
    void close();
    /// Whether something could not be written.
    bool failed() const { return failed_; }

private:
    template <typename Work>
    void guarded(Work&& work);

    Program& program_;
    Text path_;
    std::unique_ptr<OutputFile> file_;
    std::string bytes_;
    bool told_ = false;
    bool failed_ = false;
};

/// The line that clears a scratch file: CR, then the line end.
inline constexpr std::string_view cleared_line = "\r\r\n";

} // namespace tarvik
