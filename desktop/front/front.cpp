#include "desktop/front/front.h"

#include "desktop/look/qt_text.h"

namespace tarvik {

Text typed_characters(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return {enter_key};
    case Qt::Key_Escape: return {U'\x1b'};
    default: break;
    }
    // AltGr shows as Ctrl with Alt and types characters.
    const auto held = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool commands = held != Qt::NoModifier && held != (Qt::ControlModifier | Qt::AltModifier);
    if (commands) return {};
    Text characters;
    for (const char32_t character : from_qt(event.text()))
        if (character >= U' ' && character != 0x7f) characters += character;
    return characters;
}

void press_keys(Front& front, Control& control, TextView keys, const std::function<void(char32_t)>& reach,
                const std::function<bool(char32_t)>& is_text)
{
    for (const char32_t key : keys.str())
        front.queue.submit([&front, &control, key, reach, is_text] {
            if (key >= U' ' && is_text(key)) return reach(key);
            Event event{EventKind::KeyPress, control};
            event.key = key;
            front.queue.send(event);
            if (!event.eaten && !front.program.ended) reach(key);
        });
}

void post_mouse(Front& front, Control& control, EventKind kind, const QMouseEvent& event)
{
    Event posted{kind, control};
    switch (event.button()) {
    case Qt::LeftButton: posted.button = MouseButton::Left; break;
    case Qt::MiddleButton: posted.button = MouseButton::Middle; break;
    case Qt::RightButton: posted.button = MouseButton::Right; break;
    default: return;
    }
    posted.ctrl = event.modifiers().testFlag(Qt::ControlModifier);
    front.queue.post(posted);
}

void take_context_menu(Front& front, Control& control, QContextMenuEvent& event)
{
    event.accept();
    if (event.reason() != QContextMenuEvent::Keyboard) return;
    Event pressed{EventKind::MouseDown, control};
    pressed.button = MouseButton::Right;
    front.queue.post(pressed);
}

} // namespace tarvik
