#pragma once

#include "desktop/controls/line_box.h"
#include "desktop/windows/command_list.h"

#include <QObject>

namespace tarvik {

class TextWidget;

/// What the keyboard does in the query box beside typing: it scrolls the pane that is shown and picks commands from the
/// list that comes with "An".
class QueryAid final : public QObject {
public:
    /// `shown_pane` gives the pane that the user looks at, if there is one.
    QueryAid(Front& front, LineBox& box, QWidget& window, std::function<TextWidget*()> shown_pane);

    CommandList& list() { return list_; }
    /// The text of the box may have changed, by the user or not.
    void show_commands();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool pick(const QKeyEvent& event);
    bool scroll(const QKeyEvent& event);
    void put(const QString& command, bool closes_list);
    Front& front_;
    LineBox& box_;
    std::function<TextWidget*()> shown_pane_;
    CommandList& list_;
    QString put_; // what the list has put into the box, and the user has not changed since
};

} // namespace tarvik
