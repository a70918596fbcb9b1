#pragma once

#include "desktop/windows/line_box.h"

#include <QListWidget>

#include <span>
#include <string_view>

namespace tarvik {

class TextWidget;

/// A command of the query box, what it does, in one line, and what the heading of the manual holds that says more.
struct CommandHelp {
    std::u32string_view command, does;
    const char* heading;
};
std::span<const CommandHelp> command_help();

/// The commands that begin as the user has begun to type, over the query box; none where that is a command already. It
/// never takes the focus: the keys of the box choose from it, and scroll the pane while it does not show.
class CommandList final : public QListWidget {
public:
    /// `shown_pane` gives the pane that the user looks at, if there is one.
    CommandList(Front& front, LineBox& box, QWidget& window, std::function<TextWidget*()> shown_pane);

    /// The text of the box may have changed, by the user or not.
    void follow_box();
    /// Whether typed letters are text while they would be keys otherwise; ends with Enter and Esc.
    bool types_text() const { return types_text_; }
    void set_types_text(bool types_text) { types_text_ = types_text; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void offer(const QString& typed);
    bool pick(int key);
    void put(bool closes);
    bool is_text(char32_t key) const;
    Front& front_;
    LineBox& box_;
    std::function<TextWidget*()> shown_pane_;
    bool types_text_ = false;
    QString put_; // what the list has put into the box, and the user has not changed since
};

} // namespace tarvik
