#pragma once

#include "engines/automation.h"
#include "engines/sheet_picture.h"
#include "mainwindow/control.h"

#include <array>

/// The three windows: their controls under their names, and the members that more than one handler uses.
namespace tarvik {

/// The main window.
struct Form1 {
    explicit Form1(ModelListeners& listeners);

    Window window;
    ControlArray<TextBox> Text1; ///< 1 query box, 2 number box, 4 page box, 5 characters per page; 0 and 3 stay hidden
    Pane RichTextBox1;           ///< results and pages
    Pane RichTextBox2;           ///< the open document
    Pane RichTextBox3;           ///< views of the column commands
    ControlArray<Control> Command1;
    ControlArray<Control> Command2;
    Control Command3;
    Control Command6;
    ControlArray<Control> Command7; ///< "Esc"
    ControlArray<Control> Command8; ///< "q"
    ControlArray<Control> Command9; ///< third keys
    OptionButton Option1, Option2, Option3;
    Control Frame1, Frame2, Frame3, Frame4;
    ControlArray<Control> Label1, Label2;                                  ///< arrows between the keys
    ControlArray<Timer> Timer1;                                            ///< pane movements
    Timer Timer3, Timer4, Timer5, Timer6, Timer7, Timer8, Timer9, Timer10; ///< batch runs

    TextBox& query_box() { return Text1[1]; }
    const TextBox& query_box() const { return Text1[1]; }
    TextBox& number_box() { return Text1[2]; }
    const TextBox& number_box() const { return Text1[2]; }
    TextBox& page_box() { return Text1[4]; }
    const TextBox& page_box() const { return Text1[4]; }
    TextBox& page_size_box() { return Text1[5]; } ///< characters per page
    const TextBox& page_size_box() const { return Text1[5]; }

    /// Any of the three panes, which always share their rectangle.
    std::array<Pane*, 3> panes() { return {&RichTextBox1, &RichTextBox2, &RichTextBox3}; }
    std::array<OptionButton*, 3> options() { return {&Option1, &Option2, &Option3}; }
    std::array<Control*, 4> frames() { return {&Frame1, &Frame2, &Frame3, &Frame4}; }
    std::array<Timer*, 8> batch_timers()
    {
        return {&Timer3, &Timer4, &Timer5, &Timer6, &Timer7, &Timer8, &Timer9, &Timer10};
    }

    /// The boxes and panes that are pasted into by the menu, each with the flag that tells whether it has the focus.
    std::array<std::pair<TextControl*, bool*>, 5> focus_flags()
    {
        return {{{&query_box(), &focusquery},
                 {&number_box(), &focusnumber},
                 {&RichTextBox1, &focuspane1},
                 {&RichTextBox2, &focuspane2},
                 {&RichTextBox3, &focuspane3}}};
    }

    // Reading and queries
    std::int64_t resultcount = 0; ///< results of the last query or lookup
    double lastpage = 0;          ///< index of the last page
    std::int64_t matchpos = 0;    ///< position of the last match while matches are marked
    std::int64_t resultpos = 0;   ///< cursor of the buttons that walk through results
    double pageno = 0;            ///< number of the page shown
    Text needle;                  ///< query as the marking uses it
    bool fso = false;             ///< a file-system object stands; like textstream it is set by the program's `Files`
    bool textstream = false;      ///< a text stream of the last file access stands
    int answer = 0;               ///< result of the last message box
    bool formready = false;
    bool cutopen = false;
    bool cutopenfile = false;
    std::size_t cutdistance = 0; ///< while cutopenfile: from the ending that was found before a match to that match
    bool menuonquery = false, menuonnumber = false; ///< the context menu was opened over Text1(1), Text1(2)
    bool focusnumber = false, focusquery = false;   ///< Text1(2), Text1(1) has the focus
    bool focuspane1 = false, focuspane2 = false, focuspane3 = false;
    bool exit_confirmed = false; ///< the exit question was answered Yes and is not asked again

    // Column engine
    bool comp = false;                 ///< queries and splits work on SUG
    bool showdata = true;              ///< views are shown
    bool notcap = false;               ///< a cross comparison shows the rows outside the intersection
    bool dbresult = false;             ///< the last result came from a column query
    int sufcount = 0, sugcount = 0;    ///< rows of the last query into SUF, SUG; a comparison can raise the first
    int curcount = 0;                  ///< count of the table last queried or split
    int sufrows = 0, sugrows = 0;      ///< the counts at the last query; never raised
    int sufcol = 0;                    ///< column of SUF in a comparison of two tables
    bool sugcol_set = false;           ///< sugcol refers to Form3.Text1(4)
    std::int64_t compcount = 0;        ///< rows that a comparison or date check wrote; pairs of rows are many
    double daydiff = 0;                ///< days between the dates of the row at hand
    int daterow = 0;                   ///< row that the date normaliser tells of
    double fieldfrom = 0, fieldto = 0; ///< first and last character of the piece that an in-field query shows
    Text kqdate, kqtime, kqweekday;    ///< the attendance stamp read last
    int keycount = 0;                  ///< number of keys in keylist

    // Report runs
    Text outfolder;                       ///< where a run saves its files; ends in a backslash
    Text runtitle;                        ///< head of every progress caption
    Text runstart, runnow;                ///< time of day at the start of the run and at the latest report
    Text jobstart;                        ///< time of day at which a direct command began
    int batchcursor = 0;                  ///< index into keylist of the tick in progress
    int sheetno = 0;                      ///< number of the sheet under way
    bool batchgate = false;               ///< a tick may begin
    int allcount = 0;                     ///< records of the key in the full list
    int partcount = 0;                    ///< records of the key in the file whose lines make the sheet
    int recordcount = 0;                  ///< copy of partcount for the loops of the sheet operations
    int rowcount = 0;                     ///< records for the row loops of designed reports and of the rule engine
    int sheetrow = 0;                     ///< the row behind the last one that `statistics` wrote
    int z1end = 0, z1end2 = 0, z6end = 0; ///< row marks of the label list
    bool scanfolderset = false;           ///< the page box has locked a folder
    Text scanfolder;                      ///< the locked folder; empty while none is
    bool folderchosen = false;            ///< the user has picked the folder of a live comparison
    Text sourcefolder;                    ///< that folder with its closing separator
    bool founddata = false;               ///< a line of the sheet in hand has matched a record
    int filecount = 0;                    ///< sheets done by the rule engine

    // What the office task in hand holds; empty between tasks
    SpreadsheetApplication* xlApp = nullptr;
    Workbook* xlBook = nullptr;
    Worksheet* xlSheet = nullptr;
    DocumentApplication* wdApp = nullptr;
    TextDocument* wdDoc = nullptr;
};

/// Whether none of the option buttons is selected, so that queries work on the open document.
bool no_option_selected(const Form1& form1);
/// Selects one of the option buttons, which clears the others.
void select_option(Form1& form1, OptionButton& option);
void clear_options(Form1& form1);
/// Makes exactly one of the panes visible; they are switched in the order of their numbers.
void bring_up(Form1& form1, Pane& pane);

/// The window of column numbers and notes, which stays beside the main window.
struct Form3 {
    explicit Form3(ModelListeners& listeners);

    Window window;
    ControlArray<TextBox> Text1;    ///< 0 to 2 date check and in-field query, 3 and 4 comparison, 5 sort and statistics
    TextBox Text2;                  ///< notes
    ControlArray<Control> Command1; ///< 0 确认, 1 说明
    ControlArray<Control> Label1;   ///< help texts
};

/// A cell that a design has written, and the row of the designer's window that names it.
struct WrittenCell {
    int row, column;
    Text design_row;
};

/// A report as it would look.
struct SheetPreview {
    SheetPicture picture;
    std::vector<WrittenCell> written; ///< each the first cell of its range
};

/// The window that shows a preview; its caption tells of what. Hidden until there is one.
class PreviewArea : public Control {
public:
    using Control::Control;
    const SheetPreview& contents() const { return contents_; }
    void show(SheetPreview contents)
    {
        contents_ = std::move(contents);
        touched(Property::Contents);
        set_visible(true);
    }

    /// The cell that the user has clicked last; 0 before the first click.
    struct {
        int row = 0, column = 0;
    } picked;

private:
    SheetPreview contents_;
};

/// The report designer. Its boxes carry a design, visible or not.
struct Form4 {
    explicit Form4(ModelListeners& listeners);

    /// The boxes of Text1 and Text2 from this index on are the dynamic block of the design, those before it in pairs
    /// its single cells.
    static constexpr int first_dynamic = 28;
    static constexpr int last_box = 49;

    /// The 102 boxes in the order in which a parameter file holds them: Text3, Text1, Text2, Text4.
    std::vector<TextBox*> design_boxes();
    /// What a box gets from somewhere else than the user: it is no loss when the window closes.
    void load(TextBox& box, const Text& text);
    /// The texts of all boxes are kept elsewhere.
    void boxes_are_kept();
    /// Whether a box holds a text that the user has put there since.
    bool holds_typed_text() const;

    Window window;
    ControlArray<TextBox> Text1, Text2;   ///< 0 to 49: targets in the spreadsheet, sources in SUF
    TextBox Text3;                        ///< query text
    TextBox Text4;                        ///< key column
    Control Command1, Command2, Command3; ///< save, check, preview
    PreviewArea Preview;
    Control Frame1, Frame2, Frame3;
    Control Label1, Label2, Label3, Label4, Label5;
    std::optional<int> focused_pair; ///< index in Text1 of the pair of boxes whose row had the focus last

private:
    std::map<const TextBox*, Text> kept_;
};

/// Gives the boxes the texts of the window's design, as a window has that was just loaded.
void load_design_texts(Form4& form4);

} // namespace tarvik
