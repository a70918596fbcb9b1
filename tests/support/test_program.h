#pragma once

#include "mainwindow/mainwindow.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// A program over a temporary installation folder, with a user whose answers are laid ready and whose boxes are kept.
namespace tarvik::test {

/// A folder of its own that goes with the object.
class TemporaryFolder {
public:
    /// For tests that save thousands of times, each save flushed: folders that are made from now on lie in memory,
    /// where the system has a file system there.
    static void keep_in_memory();

    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// Writes the bytes as they are.
    void write(const std::string& name, std::string_view bytes) const;
    std::string read(const std::string& name) const;

private:
    std::filesystem::path path_;
};

/// Files that it watches have something happen to them when it is asked for: every operation that reads or changes
/// something counts, and the one with the number that was set fails, or comes upon a disk that somebody else has
/// changed that very moment. So each place where work can break off is reached by setting 1, 2, 3 ... until the work
/// gets through.
class FaultyFiles final : public FileWatcher {
public:
    /// Gets the path that the operation is asked for. What it throws comes in place of the operation, which else is
    /// done.
    using Trouble = std::function<void(TextView path)>;

    /// Counts from 1, from now on. 0: nothing happens.
    void trouble_at(std::size_t operation, Trouble trouble)
    {
        counted_ = 0;
        troubled_ = operation;
        trouble_ = std::move(trouble);
    }
    /// Throws Failure in the words of a full disk.
    void fail_at(std::size_t operation);
    std::size_t counted() const { return counted_; }

private:
    void beginning(TextView path) override;

    std::size_t counted_ = 0;
    std::size_t troubled_ = 0;
    Trouble trouble_;
};

/// Keeps every box and answers it: OK where only OK is offered, else the next answer laid ready. A question without one
/// fails the test and is answered with the safest button.
class RecordedDialogs final : public Dialogs {
public:
    Answer message(const Message& message) override;
    Text input(TextView title, TextView prompt, TextView preset) override;
    std::optional<Text> open_file(TextView filter) override { return next_file(filter); }
    std::optional<Text> save_file(TextView filter) override { return next_file(filter); }

    std::vector<Message> messages;
    std::deque<Answer> replies;
    std::deque<Text> inputs;
    std::deque<std::optional<Text>> files;
    std::vector<Text> filters;

    /// "title|text" of every message so far in UTF-8, and forgets them.
    std::vector<std::string> take_messages();

private:
    std::optional<Text> next_file(TextView filter);
};

class TestClipboard final : public Clipboard {
public:
    void clear() override { text_.clear(); }
    Text text() const override { return text_; }
    void set_text(TextView text) override { text_ = text.str(); }

private:
    Text text_;
};

class FixedClock final : public Clock {
public:
    CalendarTime time{2024, 3, 1, 9, 5, 7};
    CalendarTime now() const override { return time; }
};

class TestScreen final : public Screen {
public:
    double width() const override { return 28800; }
    double height() const override { return 16200; }
    void refresh() override {}
    bool busy = false; ///< progress is shown and has not been ended
    void progress(std::uint64_t, std::uint64_t total) override { busy = total > 0; }
    void popup_menu() override {}
};

class RecordedPrinter final : public Printer {
public:
    std::vector<Text> printed;
    std::vector<std::pair<std::filesystem::path, std::string>> files; ///< with what they held
    void print(const std::filesystem::path& file, TextView name) override;
};

/// An office that nobody is expected to call.
class NoOffice final : public OfficeEngines {
public:
    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override { throw Failure(U"没有电子表格程序"); }
    std::unique_ptr<DocumentApplication> create_document() override { throw Failure(U"没有文字处理程序"); }
};

/// A started program (Form_Load has run). `office` replaces the office that nobody calls.
class TestProgram {
public:
    explicit TestProgram(OfficeEngines* office = nullptr);

    TemporaryFolder installation;
    TemporaryFolder drive_d;
    RecordedDialogs dialogs;
    TestClipboard clipboard;
    FixedClock clock;
    Files files;
    FaultyFiles faulty;           ///< something happens only when it is asked for
    Files watched{files, faulty}; ///< what the program uses
    TestScreen screen;
    RecordedPrinter printer;
    NoOffice no_office;
    Program program;

    Form1& form1() { return program.form1; }
    Module1& module1() { return program.module1; }
    /// Lays a text into the document pane as opening does it, without a file.
    void open_text(TextView text);
};

} // namespace tarvik::test
