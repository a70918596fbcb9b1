#pragma once

#include "mainwindow/form1.h"
#include "platform/files/watched_files.h"

namespace tarvik {

/// The files of a program: `fso` and `textstream` of the main window keep what the accesses have left standing, a
/// file-system object each, a text stream those that read or write and do not fail.
class NotedFiles final : public WatchedFiles {
public:
    NotedFiles(Files& files, Form1& form1) : WatchedFiles(files), form1_(form1) {}

private:
    void looking() const override { form1_.fso = true; }
    void beginning(TextView) const override { form1_.fso = true; }
    void stream_stands() const override { form1_.textstream = true; }

    Form1& form1_;
};

} // namespace tarvik
