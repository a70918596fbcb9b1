#include "desktop/front/event_queue.h"

#include "desktop/look/busy_cursor.h"

#include <iostream>
#include <new>

namespace tarvik {

namespace {

// Work that can take long begins with these. A short handler changes the cursor back before anybody sees it.
bool can_take_long(const Event& event)
{
    switch (event.kind) {
    case EventKind::Click:
    case EventKind::Menu:                 // which pastes
    case EventKind::MouseUp: return true; // every selection is copied
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
    recorder_.send(event);
}

void EventQueue::drain()
{
    busy_ = true;
    while (!waiting_.empty()) {
        const auto action = std::move(waiting_.front());
        waiting_.pop_front();
        attempt(action);
        attempt(show_);
    }
    busy_ = false;
}

// Nothing may leave through the toolkit's event loop, nor may a failure end the queue: not even one of telling it.
void EventQueue::attempt(const std::function<void()>& work)
{
    const auto tell_of = [this](TextView reason) {
        try {
            tell(program_, U" 请注意：\r\n操作没有完成：" + reason, application_title, Icon::Critical);
        } catch (const std::exception& untold) {
            std::cerr << "tarvik: " << untold.what() << '\n';
        }
    };
    try {
        work();
    } catch (const ScriptFailure& failure) {
        script_failed(failure);
    } catch (const std::bad_alloc&) {
        tell_of(U"内存不足。");
    } catch (const std::exception& error) {
        tell_of(from_utf8(error.what()));
    }
}

} // namespace tarvik
