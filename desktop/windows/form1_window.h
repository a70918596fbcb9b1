#pragma once

#include "desktop/windows/command_list.h"
#include "desktop/windows/find_bar.h"
#include "desktop/windows/form_window.h"
#include "desktop/windows/status_line.h"

#include <QPropertyAnimation>

namespace tarvik {

/// The height of the status line along the main window's lower edge, in twips.
inline constexpr double status_height = 290;

/// The main window.
class Form1Window final : public FormWindow {
public:
    explicit Form1Window(const Front& front);

    LineBox& query_box() { return *query_box_; }
    /// Chooses how large the model shows on a screen of which this much is free. To be called when the model has its
    /// opening size, before the window shows.
    void fit_to_screen(QSize available);
    ProgressLine& progress() { return progress_; }
    StatusLine& status() { return status_; }
    /// Brings up to date what depends on more than one control: hints, the list of commands, the status.
    void show_state();

    /// What the numbers and headings over a table do when they are clicked.
    std::function<void(int)> column_picked = [](int) {};
    std::function<void(const QString& path)> file_dropped = [](const QString&) {};
    /// Where the panes are on the screen; empty while the window does not show.
    QRect pane_on_screen() const;
    /// The pane that the user looks at, if there is one.
    TextWidget* shown_pane();
    FindBar& find_bar() { return find_bar_; }
    /// From the query box into the pane, and back.
    void switch_focus();
    /// While keys are commands: the letters typed from now on are text, or commands again.
    void switch_typing();
    /// Presses a button that shows, as the mouse would.
    void press(const Control& button);
    /// Makes the text of the panes larger or smaller by a step; 0 is back to the design's.
    void zoom_panes(int step);
    /// Puts the separator of the last query back into the number box.
    void put_separator();
    /// Goes to the page of the document where the shown result begins.
    void go_to_result();
    /// Looks a word up in the dictionary of its language; an empty one is the word at hand in the pane.
    void look_up(QString word = {});
    /// Looks up the word before or behind in the row of those that were looked up.
    void walk_words(int step);
    const std::vector<TextWidget*>& panes() const { return panes_; }

protected:
    /// The model's places stand, but for three that would hide something: the number box ends above the "◎" at its
    /// corner, a row of frames that runs over the window's edge is pushed back inside, and the frames make room for the
    /// status line by their empty lower edge, and a little by moving up.
    QRectF fitted(const Control& control) const override;
    void place() override;
    void before_first_show() override;
    QSize picture_size() const override { return grows() ? growth_.endValue().toSize() : size(); }
    void take_size(QSize size) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void make_controls();
    void make_keys();
    void make_panes();
    bool grows() const { return growth_.state() == QAbstractAnimation::Running; }
    void grow();
    void to_query_box();
    void keep_separator();

    Form1& form1_;
    FontSizes number_fonts_; // the number box is no pane and keeps its size
    LineBox* query_box_ = nullptr;
    std::vector<TextWidget*> panes_;
    ProgressLine progress_;
    StatusLine status_;
    CommandList* commands_ = nullptr;
    FindBar find_bar_;
    QLabel key_hint_{this};
    QPropertyAnimation growth_{this, "size"}; // when the program starts
    QSizeF full_size_;                        // that the window opens with, in pixels without any zoom
    double largest_zoom_ = 1;
    bool pressed_ = false;
    Text separator_, number_before_; // of the last query; in the number box as last seen
    QStringList words_;              // that were looked up
    qsizetype word_ = -1;
    QString dragged_; // the file that is over the window
};

} // namespace tarvik
