#pragma once

#include "desktop/controls/line_box.h"

#include <QListWidget>

#include <span>
#include <string_view>

namespace tarvik {

class TextWidget;

/// A command of the query box and what it does, in one line.
struct CommandHelp {
    std::u32string_view command, does;
};
std::span<const CommandHelp> command_help();

/// The commands that begin as the user has begun to type, over the query box. It never takes the focus.
class CommandList final : public QListWidget {
public:
    explicit CommandList(QWidget& window);

    /// Shows the commands that begin with what was typed, over `box`; none where that is a command already.
    void offer(const QString& typed, const QRect& box);
    /// The command that is so many entries further; the first or last one where there is no such entry.
    QString step(int entries);
    /// The command that was chosen from the list; empty while there is none.
    QString current() const;

private:
    void show_lighter();
};

/// What the keyboard does in the query box beside typing: it scrolls the pane that is shown and picks commands from the
/// list that comes with "An".
class QueryAid final : public QObject {
public:
    /// `shown_pane` gives the pane that the user looks at, if there is one.
    QueryAid(Front& front, LineBox& box, QWidget& window, std::function<TextWidget*()> shown_pane);

    CommandList& list() { return list_; }
    /// The text of the box may have changed, by the user or not.
    void show_commands();
    /// Whether typed letters are text while they would be commands otherwise; ends with Enter and Esc.
    bool types_text() const { return types_text_; }
    void set_types_text(bool types_text) { types_text_ = types_text; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool pick(const QKeyEvent& event);
    bool is_text(char32_t key) const;
    bool scroll(const QKeyEvent& event);
    void put(const QString& command, bool closes_list);
    Front& front_;
    LineBox& box_;
    std::function<TextWidget*()> shown_pane_;
    CommandList& list_;
    bool types_text_ = false;
    QString put_; // what the list has put into the box, and the user has not changed since
};

} // namespace tarvik
