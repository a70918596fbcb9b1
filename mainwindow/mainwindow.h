#pragma once

#include "mainwindow/forms.h"
#include "mainwindow/table.h"
#include "platform/files/file_cache.h"
#include "platform/platform.h"

#include <map>
#include <set>
#include <vector>

/// What this folder offers: the program's state and window model, start-up and shutdown, the resets, the layout rule,
/// the pane movements, and the small services (messages, files, numbers) that every handler above it uses.
namespace tarvik {

/// `fso` and `textstream` of the main window keep what the accesses to files have left standing, a file-system object
/// each, a text stream those that read or write and do not fail.
class NotedAccesses final : public FileWatcher {
public:
    explicit NotedAccesses(Form1& form1) : form1_(form1) {}

private:
    void looking() override { form1_.fso = true; }
    void beginning(TextView) override { form1_.fso = true; }
    void stream_stands() override { form1_.textstream = true; }

    Form1& form1_;
};

/// The arrays and flags that all of the program shares. An array lives as long as the program.
struct Module1 {
    TextArray pages{1'000'000};    ///< the open document in pages; index 0 is the first
    TextArray hits{1'000'000};     ///< results of the query with no option
    TextArray filehits{1'000'000}; ///< results of the sentence query
    TextArray cnhits{1'000'000};   ///< entries of the Chinese dictionary
    TextArray enhits{1'000'000};   ///< entries of the English dictionary's letter files
    TextArray zhhits{1'000'000};   ///< entries of the English dictionary for other words

    Table suf;
    Table sug;
    RowTexts sufrow{300'000};
    RowTexts sugrow{300'000};
    TextArray rowhits{1'000'000}; ///< lines that a column query found, the removed duplicates empty
    TextArray distinct{300'000};  ///< values of a statistic
    TextArray distinctn{300'000}; ///< count of each, as decimal text
    TextArray colcopy{300'000};   ///< working copy of the counted column
    TextArray keylist{10'000};    ///< keys of a report run

    bool analysismode = false; ///< the window shows the data-analysis controls
    bool designeropen = false; ///< the report designer is shown
};

/// What is known of the open document beside its text.
struct OpenedFile {
    Text path{}; ///< empty until a document is opened
    std::u32string_view encoding{};
    bool lines_ended_in_lf = false;
};

/// What is known of the report run in progress, or of the last one, beside the members of the main window: what a clerk
/// asks when it is over.
struct RunRecord {
    int number = 0; ///< of this run since the program started
    CalendarTime started{};
    std::vector<Text> files{}; ///< saved, in their order, as the program names them
    struct Passed {
        Text key, reason;
    };
    std::vector<Passed> passed{};        ///< keys that made no sheet, and why
    std::size_t not_reached = 0;         ///< keys that a stopped run did not come to
    std::vector<Text> failures{};        ///< files of a folder that were passed over, reported when the run is over
    std::u32string_view template_file{}; ///< of the command that started it
    std::map<Text, Text> names{};        ///< the file that was given to each name that the sheets asked for
    bool stop_wished = false;            ///< the run is to end before its next sheet
    bool stopped = false;                ///< it ended, or did not even begin, before all was done
    bool ahead_of_command = false;       ///< text stood ahead of the command, so that sheets were not saved
    std::size_t older_layouts = 0;       ///< sheets laid the older way, because the box no longer held the command
};

struct Program {
    Program(const Platform& platform_, OfficeEngines& office_)
        : form1(listeners), form3(listeners), form4(listeners), noted_accesses(form1),
          files(platform_.files, noted_accesses), platform(platform_.with(files)), office(office_)
    {
    }

    ModelListeners listeners;
    Module1 module1;
    Form1 form1;
    Form3 form3;
    Form4 form4;
    NotedAccesses noted_accesses;
    Files files; ///< what platform.files leads to
    Platform platform;
    OfficeEngines& office;
    FileCache<Document> documents;             ///< foreign files that scans read, decoded once
    std::map<Text, FileStamp> blank_templates; ///< templates as the blanking left them empty, by path
    OpenedFile opened;                         ///< the document that was opened last
    Text notice;                               ///< what was passed over in silence; a front may show it and empties it
    RunRecord run;                             ///< the report run in progress or the last one
    std::set<Text> scratch_failures;           ///< why scratch files cannot be written, as the user knows
    Text note_failure;                         ///< why the page box cannot note its folder, as the user knows
    bool ended = false;                        ///< the main window was closed
};

/// Shows a box that the user can only confirm; `answer` takes the result as with ask().
Answer tell(Program& program, TextView text, TextView title = application_title, Icon icon = Icon::None);
/// Shows a box and keeps what the user pressed in `answer`, which so holds the result of the last box.
Answer ask(Program& program, TextView text, TextView title, Buttons buttons, Icon icon = Icon::None);

/// The path of a fixed file name in the installation folder.
Text installed(const Program& program, TextView name);
/// A foreign text file, decoded once and again only when it has changed. Throws Failure when it cannot be read.
Document load_document(Program& program, TextView path);

// Start-up and shutdown

/// Everything between the start of the process and the window's being shown, in the order that start-up has. It shows
/// no message; from the fonts on, what fails is passed over.
void Form_Load(Program& program);
/// Asks whether to leave. Gives whether the closing goes on.
bool Form_QueryUnload(Program& program);
void Form_Unload(Program& program);
/// A left click on the window's background goes back to the defaults: panes, flags, options and the results up to
/// resultcount.
void Form_Click(Program& program);
/// Empties the results of all queries but the plain one up to resultcount, which stays, and goes back to the first.
void forget_results(Program& program);

// Layout and modes

void Form_Resize(Program& program);
/// Grows the window to its opening size for a screen of this width.
void opening_animation(Program& program, double screen_width);
void Command6_Click(Program& program);
void Command3_Click(Program& program);

/// A pressed "◎" moves the panes until any of them is released; `index` is the button's.
void Command2_MouseDown(Program& program, int index);
void Command2_MouseUp(Program& program, int index);
/// One step of a pane movement; `index` is the timer's.
void Timer1_Timer(Program& program, int index);

// Small events

/// A new query text forgets the old results.
void Text1_Change(Program& program, int index);
/// Query box, number box and page box are emptied.
void Text1_DblClick(Program& program, int index);
void Option_Click(Program& program, OptionButton& option);
/// Keeps the flags of the box or pane that has the focus.
void focus_changed(Program& program, const Control& control, bool has_focus);

// The mouse on the panes and boxes, and what it does with the clipboard

enum class MouseButton { Left, Middle, Right };
enum class MenuEntry { copy1, nothing, paste1 };

/// The middle button with Ctrl enlarges all of the text; the right button opens the context menu.
void RichTextBox_MouseDown(Program& program, Pane& pane, MouseButton button, bool ctrl);
/// Every selection is a copy: the clipboard holds what is selected when a button is released, also nothing.
void RichTextBox_MouseUp(Program& program, Pane& pane);

/// Query box and number box: the right button opens the context menu, and the next release pastes.
void Text1_MouseDown(Program& program, int index, MouseButton button);
void Text1_MouseUp(Program& program, int index);

/// An entry of the context menu acts on the box that has the focus.
void menu_Click(Program& program, MenuEntry entry);

/// The smallest of three numbers that is not 0, and 0 if all are 0.
double min3to1(double a, double b, double c);

} // namespace tarvik
