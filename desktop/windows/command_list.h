#pragma once

#include <QListWidget>

#include <span>
#include <string_view>

namespace tarvik {

/// A command of the query box and what it does, in one line.
struct CommandHelp {
    std::u32string_view command, does;
};
std::span<const CommandHelp> command_help();

/// The commands that begin as the user has begun to type, over the query box. It never takes the focus.
class CommandList final : public QListWidget {
public:
    explicit CommandList(QWidget& window);

    /// Shows the commands that begin with what was typed, or nothing where none is meant. `below` is the box.
    void offer(const QString& typed, const QRect& box);
    /// The command that is so many entries further; the first or last one where there is no such entry.
    QString step(int entries);
    /// The command that the user is at.
    QString current() const;

private:
    void show_lighter();
};

} // namespace tarvik
