#include "desktop/front/input.h"

#include "desktop/look/qt_text.h"

#include <QKeyEvent>

namespace tarvik {

Text typed_characters(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return {enter_key};
    case Qt::Key_Escape: return {escape_key};
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

void press_keys(Front& front, Control& control, TextView keys, const std::function<void(char32_t)>& reach)
{
    for (const char32_t key : keys.str())
        front.queue.submit([&front, &control, key, reach] {
            Event event{EventKind::KeyPress, control};
            event.key = key;
            front.queue.send(event);
            if (!event.eaten && !front.program.ended) reach(key);
        });
}

} // namespace tarvik
