#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_widget.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QKeySequence>

#include <memory>

namespace tarvik {

namespace {

constexpr std::u32string_view line_end = U"\r\n";
constexpr std::size_t most_undone = 500;

} // namespace

void TextWidget::replace_selection(TextView text)
{
    text_.replace_selection(text);
    stale_ = editing_ = true;
    refresh();
    editing_ = false;
}

// As the user does, who can take it back.
void TextWidget::edit(TextView text)
{
    Reversal reversal{Position::at_offset(selection_start()), text.size(), {}};
    area_.lines().append_to(selection_start(), selection_end() - selection_start(), reversal.text);
    if (undo_.size() == most_undone) undo_.erase(undo_.begin());
    undo_.push_back(std::move(reversal));
    replace_selection(text);
}

void TextWidget::remove(std::size_t from, std::size_t to)
{
    if (from == to) return;
    select(from, to);
    edit({});
}

void TextWidget::undo()
{
    if (undo_.empty()) return;
    const Reversal last = std::move(undo_.back());
    undo_.pop_back();
    text_.select({last.start, last.length});
    replace_selection(last.text);
}

bool TextWidget::edit_by_key(const QKeyEvent& event)
{
    const bool selected = anchor_ != caret_;
    const bool whole_word = event.modifiers().testFlag(Qt::ControlModifier);
    if (event.matches(QKeySequence::SelectAll)) select(0, area_.lines().size());
    else if (event.matches(QKeySequence::Undo)) undo();
    else if (event.matches(QKeySequence::Paste)) {
        const BusyCursor busy;
        const Text text = front_.program.platform.clipboard.text();
        if (!text.empty()) edit(text);
    } else if (const bool cuts = event.matches(QKeySequence::Cut); cuts || event.matches(QKeySequence::Copy)) {
        if (selected) front_.program.platform.clipboard.set_source(text_.selected_source());
        if (cuts) remove(selection_start(), selection_end());
    } else if (event.key() == Qt::Key_Backspace) {
        const std::size_t before = whole_word ? word_edge(left_of(caret_), false) : left_of(caret_);
        remove(selected ? selection_start() : before, selection_end());
    } else if (event.key() == Qt::Key_Delete) {
        const std::size_t behind = whole_word ? word_edge(caret_, true) : right_of(caret_);
        remove(selection_start(), selected ? selection_end() : behind);
    } else return false;
    return true;
}

// A key that no handler has eaten.
void TextWidget::reach(char32_t key)
{
    refresh();
    if (key != enter_key && key < U' ') return;
    edit(key == enter_key ? Text(line_end) : Text(1, key));
}

void TextWidget::keyPressEvent(QKeyEvent* event)
{
    const Text keys = typed_characters(*event);
    // With Ctrl, Enter is a line end wherever it would start something.
    if (keys == Text{enter_key} && event->modifiers().testFlag(Qt::ControlModifier)) {
        front_.queue.submit([this] { reach(enter_key); });
        return;
    }
    if (!keys.empty()) {
        press_keys(front_, text_, keys, [this](char32_t key) { reach(key); });
        return;
    }
    event->ignore();
    const std::shared_ptr<QKeyEvent> pressed(event->clone());
    const auto act = [this, pressed] {
        refresh();
        pressed->setAccepted(move_by_key(*pressed) || edit_by_key(*pressed));
    };
    front_.queue.submit(act);
    event->setAccepted(pressed->isAccepted());
}

void TextWidget::inputMethodEvent(QInputMethodEvent* event)
{
    preedit_ = event->preeditString();
    press_keys(front_, text_, from_qt(event->commitString()), [this](char32_t key) { reach(key); });
    viewport()->update();
    event->accept();
}

QVariant TextWidget::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query == Qt::ImCursorRectangle) return caret_rectangle().translated(viewport()->pos());
    if (query == Qt::ImFont) return fonts_.size(0).font;
    return QAbstractScrollArea::inputMethodQuery(query);
}

} // namespace tarvik
