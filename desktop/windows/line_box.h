#pragma once

#include "desktop/front/front.h"
#include "desktop/look/qt_text.h"

#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <functional>
#include <memory>

namespace tarvik {

/// A box of one line. Keys reach its handler before its text; the text and the selection are the model's. A text that
/// is longer than the toolkit can show in one line is cut in the model too, and the user told.
class LineBox final : public QLineEdit {
public:
    /// `context_menu`: the right button belongs to the system and not to the toolkit's own menu.
    LineBox(Front& front, TextBox& box, bool context_menu, QWidget* parent)
        : QLineEdit(parent), front_(front), box_(box), context_menu_(context_menu)
    {
        setAttribute(Qt::WA_NoMousePropagation);
        setMinimumSize(1, 1);
        setAcceptDrops(false);                               // a file that is dropped belongs to the window
        setMaxLength(2 * static_cast<int>(most_characters)); // which counts rare characters twice
        connect(this, &QLineEdit::textChanged, this, [this] { text_to_model(); });
        connect(this, &QLineEdit::selectionChanged, this, [this] { selection_to_model(); });
        connect(this, &QLineEdit::cursorPositionChanged, this, [this] { selection_to_model(); });
    }

    /// Whether a typed character goes into the text at once, as a pasted one does, and is no press of a key.
    std::function<bool(char32_t)> takes_as_text = [](char32_t) { return false; };
    /// Brings text and selection up to date with the model.
    void show_model()
    {
        const QSignalBlocker blocker(this);
        if (box_.text().size() > most_characters)
            front_.queue.submit([this] {
                if (box_.text().size() <= most_characters) return;
                box_.set_text(box_.text().substr(0, most_characters));
                front_.program.notice = Text(too_long);
            });
        const QString wanted = to_qt(TextView(box_.text()).substr(0, most_characters));
        if (text() != wanted) setText(wanted);
        const Selection& selection = box_.selection();
        const int start = qt_place(box_.text(), selection.start.offset());
        const int end = qt_place(box_.text(), selection.start.offset() + selection.length);
        if (end > start) {
            if (selectionStart() != start || selectionEnd() != end) setSelection(start, end - start);
        } else if (hasSelectedText() || cursorPosition() != start) {
            setCursorPosition(start);
        }
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const Text keys = typed_characters(*event);
        if (!keys.empty()) {
            type(keys);
            return;
        }
        if (event->matches(QKeySequence::Paste)) {
            front_.queue.submit([this] { paste_text(); });
            return;
        }
        const std::shared_ptr<QKeyEvent> pressed(event->clone());
        front_.queue.submit([this, pressed] { QLineEdit::keyPressEvent(pressed.get()); });
        event->setAccepted(pressed->isAccepted());
    }
    // What an input method has put together is typed character by character, as if the keyboard had these keys.
    void inputMethodEvent(QInputMethodEvent* event) override
    {
        const Text committed = from_qt(event->commitString());
        QInputMethodEvent rest(event->preeditString(), event->attributes());
        rest.setCommitString({}, event->replacementStart(), event->replacementLength());
        QLineEdit::inputMethodEvent(&rest);
        type(committed);
        event->accept();
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        pressed_ = event->button() == Qt::LeftButton;
        if (event->button() != Qt::RightButton) QLineEdit::mousePressEvent(event);
        post_mouse(front_, box_, EventKind::MouseDown, *event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (event->button() != Qt::RightButton) QLineEdit::mouseReleaseEvent(event);
        post_mouse(front_, box_, EventKind::MouseUp, *event);
        const bool clicked = pressed_ && event->button() == Qt::LeftButton && rect().contains(event->pos());
        pressed_ = false;
        if (clicked) front_.queue.post({EventKind::Click, box_});
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        QLineEdit::mouseDoubleClickEvent(event);
        if (event->button() == Qt::LeftButton) front_.queue.post({EventKind::DblClick, box_});
    }
    void contextMenuEvent(QContextMenuEvent* event) override
    {
        if (context_menu_) take_context_menu(front_, box_, *event);
        else QLineEdit::contextMenuEvent(event);
    }

private:
    static constexpr std::size_t most_characters = 10'000; // the toolkit lays out all of a line at every key
    static constexpr std::u32string_view too_long = U"这个框最多放 10000 字，其余的没有放入";

    void type(TextView keys)
    {
        press_keys(
            front_, box_, keys, [this](char32_t key) { reach(key); }, takes_as_text);
    }
    // Enter and Esc stand for themselves and change no text of one line.
    void reach(char32_t key)
    {
        show_model(); // the key's handler may have changed the text
        if (key >= U' ') insert(to_qt(Text(1, key)));
    }
    // A cell that is copied in a spreadsheet comes with a line end, which no query is meant to hold.
    void paste_text()
    {
        const BusyCursor busy;
        Text text = front_.program.platform.clipboard.text();
        while (!text.empty() && (text.back() == U'\n' || text.back() == U'\r')) text.pop_back();
        show_model();
        const std::size_t kept = std::min(box_.text().size() - box_.selection().length, most_characters);
        const std::size_t room = most_characters - kept;
        if (text.size() > room) front_.program.notice = Text(too_long);
        if (!text.empty()) insert(to_qt(TextView(text).substr(0, room)));
    }
    // A change that the toolkit made on the user's behalf: deleting, undoing.
    void text_to_model()
    {
        const auto take_over = [this] {
            box_.set_text(from_qt(text()));
            selection_to_model();
        };
        if (front_.queue.busy()) take_over(); // part of the action in hand
        else front_.queue.submit(take_over);
    }
    void selection_to_model()
    {
        if (from_qt(text()) != box_.text()) return; // the text is on its way
        const int start = hasSelectedText() ? selectionStart() : cursorPosition();
        const int end = hasSelectedText() ? selectionEnd() : start;
        const std::size_t first = place_of_qt(text(), start);
        box_.select({Position::at_offset(first), place_of_qt(text(), end) - first});
    }

    Front& front_;
    TextBox& box_;
    bool context_menu_;
    bool pressed_ = false;
};

} // namespace tarvik
