#include "desktop/front/event_queue.h"

#include "desktop/look/busy_cursor.h"

namespace tarvik {

namespace {

// Work that can take long begins with these. A short handler changes the cursor back before anybody sees it.
bool can_take_long(const Event& event)
{
    switch (event.kind) {
    case EventKind::Click: return true;
    case EventKind::KeyPress: return event.key == U'\r' || event.key == U'\x1b';
    case EventKind::Tick: return event.control.name() != "Timer1";
    default: return false;
    }
}

} // namespace

void EventQueue::submit(std::function<void()> action)
{
    if (closed_) return;
    waiting_.push_back(std::move(action));
    if (!busy_) drain();
}

void EventQueue::post(const Event& event)
{
    submit([this, event] {
        Event own = event;
        send(own);
    });
}

void EventQueue::send(Event& event)
{
    if (program_.ended) return;
    const BusyCursor cursor(can_take_long(event));
    dispatch(program_, event);
}

void EventQueue::drain()
{
    busy_ = true;
    while (!waiting_.empty()) {
        const auto action = std::move(waiting_.front());
        waiting_.pop_front();
        run(action);
        show_();
    }
    busy_ = false;
}

// Nothing may leave through the toolkit's event loop.
void EventQueue::run(const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::exception& error) {
        tell(program_, U" 请注意：\r\n操作没有完成：" + from_utf8(error.what()), application_title, Icon::Critical);
    }
}

} // namespace tarvik
