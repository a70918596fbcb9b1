#include "scripts/watches.h"

#include <algorithm>

namespace tarvik {

void Watches::add(Expression expression)
{
    const auto same = [&](const Watch& watch) { return watch.expression.written == expression.written; };
    if (std::ranges::any_of(watches_, same)) return;
    Value now = expression.read();
    watches_.push_back({std::move(expression), std::move(now)});
}

void Watches::look_at(const Control& control)
{
    for (Watch& watch : watches_)
        if (watch.expression.control == &control) look(watch);
}

void Watches::look_at_members()
{
    for (Watch& watch : watches_)
        if (!watch.expression.control) look(watch);
}

void Watches::look(Watch& watch)
{
    Value now = watch.expression.read();
    if (now == watch.last) return;
    watch.last = std::move(now);
    transcript_.line(watch.expression.written + " = " + printed(watch.last));
}

} // namespace tarvik
