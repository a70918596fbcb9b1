#pragma once

#include "desktop/front/front.h"
#include "desktop/text_view/ruler.h"
#include "desktop/text_view/text_area.h"
#include "desktop/text_view/text_search.h"

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QTimer>

#include <span>

namespace tarvik {

/// Shows and edits a text of any length. The text is the model's; the view keeps only where it is and what it shows.
class TextWidget final : public QAbstractScrollArea {
public:
    TextWidget(Front& front, const FontSizes& fonts, TextControl& text, QWidget* parent);

    /// Brings text, look and selection up to date with the model.
    void show_model();
    /// After a change of the font.
    void lay_anew();

    /// A text that reads like a table gets a ruler over it.
    void add_ruler(ColumnGuide guide);
    /// What the ruler tells has changed.
    void update_ruler();

    /// The lines of a box break at its width; those of a pane where the model says so.
    void break_lines() { breaks_lines_ = true; }
    /// Line ends show as a sign of their own.
    void show_line_ends() { shows_line_ends_ = true; }

    /// Marks every place of what is sought, and counts them while time passes.
    void seek(const Sought& sought);
    /// Selects the next or previous place, around the end; "3 / 25" when there is one.
    QString find(bool forward);
    /// What find() gave last, after some more counting; `is_complete` when all is counted.
    QString count_places(bool& is_complete);
    /// A text that is no table shows with broken lines.
    void set_wraps_prose(bool wraps);
    void show_line_numbers(bool shown);
    /// Scrolls to a place; the end is behind the last character.
    void show_place(std::size_t offset);
    TextRange selected() const { return {selection_start(), selection_end()}; }
    /// Selects from a place up to another, as far as there is text; the view stays where it is.
    void select(std::size_t from, std::size_t to);
    /// What is selected on one line, else the word at the caret.
    QString word_at_hand();
    /// A word was clicked with Ctrl held.
    std::function<void(const QString& word)> word_asked = [](const QString&) {};
    /// Keeps so many pixels free over the text.
    void make_room(int height);
    /// What is selected, up to its first line end.
    QString selected_line() const;
    /// Scrolls by a row or a page for the keys that do so; gives whether it is one of them.
    bool scroll_by_key(int key);
    /// Whether the user has changed the text since the program set it.
    bool edited() const { return !undo_.empty(); }

    const TextArea& area() const { return area_; }
    /// The character that the caret stands before, from 0.
    std::size_t caret() const { return caret_; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

private:
    // What shows
    void refresh();
    void show_scroll_bars(); // and all else anew
    void show_ruler();
    std::size_t place_in_view() const;
    QRectF caret_rectangle() const;
    void blink();
    void paint_run(QPainter& painter, std::span<const PlacedCharacter> run, QPointF place, bool selected) const;
    void paint_characters(QPainter& painter, const TextArea::ShownRow& shown, TextRange selected) const;
    void paint_range(QPainter& painter, const TextArea::ShownRow& shown, TextRange range, const QColor& colour) const;
    void paint_preedit(QPainter& painter, const QRectF& caret) const;

    // Selection
    std::size_t selection_start() const { return std::min(anchor_, caret_); }
    std::size_t selection_end() const { return std::max(anchor_, caret_); }
    void select_and_show(std::size_t from, std::size_t to);
    void select_word(std::size_t offset);
    void drag_to(const QPoint& position);

    // Keys
    bool move_by_key(const QKeyEvent& event);
    bool edit_by_key(const QKeyEvent& event);
    std::size_t left_of(std::size_t offset) const;
    std::size_t right_of(std::size_t offset) const;
    std::size_t word_edge(std::size_t offset, bool forward) const;
    int rows_of(int step) const;
    std::vector<TextRange> found_in_view() const;
    void remove(std::size_t from, std::size_t to);
    void replace_selection(TextView text);
    void edit(TextView text);
    void undo();
    void reach(char32_t key);

    // An edit as what takes it back: `length` characters from `start` become `text` again.
    struct Reversal {
        Position start;
        std::size_t length;
        Text text;
    };

    Front& front_;
    const FontSizes& fonts_;
    TextControl& text_;
    TextArea area_;
    Ruler* ruler_ = nullptr;
    LineNumbers* numbers_ = nullptr;
    PaneText shown_text_;
    bool stale_ = true; // the model may have changed since the view was last brought up to date
    bool editing_ = false;
    std::size_t anchor_ = 0, caret_ = 0;
    std::optional<double> wanted_x_; // where the caret goes on its way up and down
    std::vector<Reversal> undo_;     // the latest last
    QString preedit_;
    Sought sought_;
    int room_above_ = 0;
    QTimer caret_timer_, drag_timer_;
    QPoint drag_position_;
    bool breaks_lines_ = false, shows_line_ends_ = false, shows_selection_ = false;
    QElapsedTimer since_double_click_;
    bool caret_shows_ = false, dragging_ = false, setting_bars_ = false;
    double wheel_ = 0;
};

} // namespace tarvik
